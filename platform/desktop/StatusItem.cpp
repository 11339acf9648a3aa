#include "platform/desktop/StatusItem.h"

#include "platform/base/Log.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QSystemTrayIcon>
#include <QWidget>

namespace platform {
namespace {

ModifierFlags modifierFlags(Qt::KeyboardModifiers modifiers) {
  ModifierFlags flags;
  flags.setFlag(ModifierFlag::Shift, modifiers.testFlag(Qt::ShiftModifier));
  flags.setFlag(ModifierFlag::Control, modifiers.testFlag(Qt::ControlModifier));
  flags.setFlag(ModifierFlag::Option, modifiers.testFlag(Qt::AltModifier));
  flags.setFlag(ModifierFlag::Command, modifiers.testFlag(Qt::MetaModifier));
  return flags;
}

/// The toolkit's window in an XEmbed tray, which it doesn't hand out; null with another kind of tray.
QWidget* embeddedWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (qstrcmp(widget->metaObject()->className(), "QSystemTrayIconSys") == 0)
      return widget;
  return nullptr;
}

}  // namespace

/// Takes the clicks on an embedded icon at the release of the button, as a button does; the toolkit would act
/// on the press, and would not say which modifiers were held.
class StatusItem::ClickFilter : public QObject {
 public:
  ClickFilter(StatusItem& owner, QWidget* window) : item(owner) { window->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        return true;
      case QEvent::MouseButtonRelease:
        released(*static_cast<QWidget*>(watched), *static_cast<QMouseEvent*>(event));
        return true;
      default:
        return false;
    }
  }

 private:
  void released(const QWidget& window, const QMouseEvent& event) {
    if (!window.rect().contains(event.position().toPoint()))
      return;
    if (event.button() == Qt::LeftButton)
      item.action({EventType::LeftMouseUp, 0, modifierFlags(event.modifiers())});
    else if (event.button() == Qt::RightButton)
      item.action({EventType::RightMouseUp, 0, modifierFlags(event.modifiers())});
  }

  StatusItem& item;
};

StatusItem::StatusItem(const Image& image, Action onClick, MenuProvider provider)
    : action(std::move(onClick)), menuProvider(std::move(provider)), shownImage(image) {
  if (const TrayKind kind = tray.kind(); kind != TrayKind::None) {
    appear(kind);
    return;
  }
  log(QStringLiteral("Sorrel status item: this desktop has no tray; the hot keys work all the same."));
  tray.watch([this] {
    if (icon)
      return;
    if (const TrayKind kind = tray.kind(); kind != TrayKind::None)
      appear(kind);
  });
}

StatusItem::~StatusItem() = default;

void StatusItem::appear(TrayKind kind) {
  icon = std::make_unique<QSystemTrayIcon>();
  applyImage();
  if (kind == TrayKind::StatusNotifier) {
    exportedMenu = std::make_unique<QMenu>();
    const auto refill = [this] { MenuPresenter::fill(*exportedMenu, menuProvider()); };
    refill();
    QObject::connect(exportedMenu.get(), &QMenu::aboutToShow, exportedMenu.get(), refill);
    icon->setContextMenu(exportedMenu.get());
  }
  QObject::connect(icon.get(), &QSystemTrayIcon::activated, icon.get(), [this](auto reason) {
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
      clicked(EventType::LeftMouseUp);
    else if (reason == QSystemTrayIcon::Context)
      clicked(EventType::RightMouseUp);
  });
  icon->show();
  if (QWidget* const window = embeddedWindow()) {
    window->setAccessibleName(shownImage.accessibilityDescription);
    clickFilter = std::make_unique<ClickFilter>(*this, window);
  }
}

void StatusItem::clicked(EventType type) {
  hasBeenClicked = true;
  lastClick = QCursor::pos();
  action({type, 0, modifierFlags(QGuiApplication::queryKeyboardModifiers())});
}

void StatusItem::setImage(const Image& image) {
  shownImage = image;
  if (icon)
    applyImage();
}

void StatusItem::applyImage() {
  icon->setIcon(shownImage.icon);
  icon->setToolTip(shownImage.accessibilityDescription);
  if (QWidget* const window = embeddedWindow())
    window->setAccessibleName(shownImage.accessibilityDescription);
}

std::optional<QRectF> StatusItem::anchor() const {
  if (icon && !icon->geometry().isEmpty())
    return QRectF(icon->geometry());
  return hasBeenClicked ? std::optional(QRectF(lastClick, QSizeF(1, 1))) : std::nullopt;
}

void StatusItem::popUpMenu(const std::shared_ptr<const Menu>& menu) {
  const auto place = anchor();
  presenter.popUp(menu, place ? place->bottomLeft().toPoint() : QCursor::pos());
}

void StatusItem::cancelTracking() {
  presenter.cancelTracking();
}

}  // namespace platform
