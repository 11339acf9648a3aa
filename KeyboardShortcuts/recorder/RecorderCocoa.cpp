#include "KeyboardShortcuts/recorder/RecorderCocoa.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Strings.h"
#include "KeyboardShortcuts/recorder/ClearButton.h"
#include "platform/base/MainMenu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Alert.h"
#include "platform/desktop/Beep.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QStyleOptionFrame>

namespace KeyboardShortcuts {
namespace {

using platform::NotificationCenter;

constexpr int clearButtonInset = 4;  // from the field's end
constexpr int forceButton = 1;

void postActiveStatus(bool isActive) {
  NotificationCenter::defaultCenter().post(QString::fromLatin1(recorderActiveStatusDidChangeNotification), {},
                                           {{QStringLiteral("isActive"), isActive}});
}

QString localized(const char* key) {
  return localizedString(QString::fromLatin1(key));
}

}  // namespace

RecorderCocoa::Recording::Recording(RecorderCocoa& field)
    : keyboard(field.window()->winId()),
      monitor([&field](const RecorderEvent& event) { return field.handle(event); }),
      pointer([&field](platform::PointerButtons::Change change) {
        // A click on another program, which may want the keyboard, even if it leaves the window its focus.
        if (change == platform::PointerButtons::Change::Pressed && !QApplication::topLevelAt(QCursor::pos()))
          field.blur();
      }) {
}

RecorderCocoa::RecorderCocoa(const Name& name, OnChange onChange, QWidget* parent)
    : QLineEdit(parent), name(name), onChange(std::move(onChange)), clearButton(new ClearButton(this)) {
  setReadOnly(true);  // the text is what was recorded; this also hides the caret
  setAlignment(Qt::AlignCenter);
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(false);
  setAttribute(Qt::WA_InputMethodEnabled, false);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setPlaceholderText(localized("record_shortcut"));
  setAccessibleDescription(localized("recorder_help"));
  connect(clearButton, &ClearButton::clicked, this, [this] { clearShortcut(); });
  showShortcut();
  shortcutsNameChange = NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(shortcutByNameDidChangeNotification), NotificationCenter::Queue::PostingThread,
      [this](const platform::Notification& change) {
        if (change.userInfo.value(QStringLiteral("name")).value<Name>() == shortcutName())
          showShortcut();
      });
}

RecorderCocoa::~RecorderCocoa() {
  endRecording();
}

void RecorderCocoa::setShortcutName(const Name& newName) {
  const bool isOther = newName != name;
  name = newName;
  if (isOther)
    showShortcut();
}

QSize RecorderCocoa::sizeHint() const {
  return {minimumWidth, QLineEdit::sizeHint().height()};
}

void RecorderCocoa::showShortcut() {
  const auto shortcut = getShortcut(name);
  setText(shortcut ? shortcut->presentableDescription() : QString());
  applyClearButtonRule();
}

void RecorderCocoa::applyClearButtonRule() {
  clearButton->setVisible(!text().isEmpty());
  // As wide at the other end, so that the text stays in the middle, unless it is too long for that.
  const int end = clearButton->isVisibleTo(this) ? ClearButton::side : 0;
  const int free = width() - fontMetrics().horizontalAdvance(text()) - 4 * clearButtonInset;
  const int start = free > 2 * end ? end : 0;
  setToolTip(free > end ? QString() : text());
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  setTextMargins(isMirrored ? end : start, 0, isMirrored ? start : end, 0);
  setCursorPosition(0);
}

void RecorderCocoa::preventBecomingKey() {
  setFocusPolicy(Qt::NoFocus);
  becomingKey = platform::MainQueue::main().asyncAfter({}, [this] { setFocusPolicy(Qt::StrongFocus); });
}

bool RecorderCocoa::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowActivate:
      showShortcut();  // the keyboard's layout may have changed
      preventBecomingKey();
      break;
    case QEvent::WindowDeactivate:
      if (isRecording())
        blur();
      break;
    default:
      break;
  }
  return QLineEdit::event(event);
}

void RecorderCocoa::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  beginRecording();
}

void RecorderCocoa::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  endRecording();
}

/// The click may be the one that brings the window to the front, and the field may still have the focus
/// because a tab found nowhere to go.
void RecorderCocoa::mousePressEvent(QMouseEvent*) {
  setFocus(Qt::MouseFocusReason);
  if (hasFocus())
    beginRecording();
}

void RecorderCocoa::showEvent(QShowEvent* event) {
  QLineEdit::showEvent(event);
  showShortcut();
  preventBecomingKey();
}

void RecorderCocoa::hideEvent(QHideEvent* event) {
  QLineEdit::hideEvent(event);
  if (isRecording())
    blur();
}

void RecorderCocoa::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  clearButton->move(isMirrored ? clearButtonInset : width() - ClearButton::side - clearButtonInset,
                    (height() - ClearButton::side) / 2);
  applyClearButtonRule();
}

/// The toolkit leaves the placeholder of a centred field out while it has the focus.
void RecorderCocoa::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (!hasFocus() || !text().isEmpty())
    return;
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(style()->subElementRect(QStyle::SE_LineEditContents, &frame, this), Qt::AlignCenter,
                   placeholderText());
}

void RecorderCocoa::beginRecording() {
  if (isRecording())
    return;
  setPlaceholderText(localized("press_shortcut"));
  applyClearButtonRule();
  setIsPaused(true);
  postActiveStatus(true);
  recording.emplace(*this);
}

void RecorderCocoa::endRecording() {
  if (!isRecording())
    return;
  recording.reset();
  setPlaceholderText(localized("record_shortcut"));
  applyClearButtonRule();
  setIsPaused(false);
  postActiveStatus(false);
}

void RecorderCocoa::blur() {
  endRecording();
  if (parentWidget())
    parentWidget()->setFocus();
  else
    clearFocus();
}

LocalEventMonitor::Outcome RecorderCocoa::handle(const RecorderEvent& event) {
  using enum LocalEventMonitor::Outcome;
  const auto menu = platform::mainMenu();
  // No version of this desktop's keeps a combination of modifiers to itself.
  const Surroundings surroundings{{}, Constants::isSandboxed()};
  const RecorderDecision decision =
      decide(event, {QRectF(mapToGlobal(QPoint()), size()), menu.get(), surroundings});
  switch (decision.action) {
    case RecorderAction::PassOn:
      return PassedOn;
    case RecorderAction::EndAndPass:
      // A tab goes on from the field, so that has the focus until then.
      if (event.event.type == platform::EventType::KeyDown)
        endRecording();
      else
        blur();
      return PassedOn;
    case RecorderAction::Drop:
      return PassedOn;  // the toolkit has to see the button go up; the field itself does nothing with it
    case RecorderAction::End:
      blur();
      break;
    case RecorderAction::Clear:
      clearShortcut();
      break;
    case RecorderAction::Beep:
      platform::beep();
      break;
    case RecorderAction::RefuseForMenu:
      refuse(localized("keyboard_shortcut_used_by_menu_item").arg(decision.menuItemTitle));
      break;
    case RecorderAction::RefuseDisallowed:
      refuse(localized("keyboard_shortcut_disallowed"));
      break;
    case RecorderAction::AskWhetherToForce:
      askWhetherToForce(*decision.shortcut);
      break;
    case RecorderAction::Save:
      save(*decision.shortcut);
      break;
  }
  return Dropped;
}

void RecorderCocoa::clearShortcut() {
  if (text().isEmpty())
    return;
  setText(QString());
  KeyboardShortcuts::setShortcut(std::nullopt, name);
  if (onChange)
    onChange(std::nullopt);
  applyClearButtonRule();
  setFocus();
}

void RecorderCocoa::save(const Shortcut& shortcut) {
  setText(shortcut.presentableDescription());
  applyClearButtonRule();
  userDefaultsSet(name, shortcut);
  if (onChange)
    onChange(shortcut);
  blur();
}

void RecorderCocoa::refuse(const QString& message) {
  platform::Alert alert;
  alert.messageText = message;
  alert.buttons << localized("ok");
  present(std::move(alert), [](std::optional<int>) {});
}

void RecorderCocoa::askWhetherToForce(const Shortcut& shortcut) {
  platform::Alert alert;
  alert.messageText = localized("keyboard_shortcut_used_by_system");
  alert.informativeText = localized("keyboard_shortcuts_can_be_changed");
  alert.buttons << localized("ok") << localized("force_use_shortcut");
  present(std::move(alert), [this, shortcut](std::optional<int> button) {
    if (button == forceButton)
      save(shortcut);
  });
}

void RecorderCocoa::present(platform::Alert alert, std::function<void(std::optional<int> button)> then) {
  blur();
  platform::Alert::present(std::move(alert), window(),
                           lifetime.guarded([this, then = std::move(then)](std::optional<int> button) {
                             setFocus();
                             then(button);
                           }));
}

}  // namespace KeyboardShortcuts
