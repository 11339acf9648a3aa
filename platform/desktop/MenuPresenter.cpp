#include "platform/desktop/MenuPresenter.h"

#include "platform/base/NotificationCenter.h"
#include "platform/desktop/wayland/MenuLayer.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>

#include <algorithm>

namespace platform {
namespace {

void post(const char* name) {
  NotificationCenter::defaultCenter().post(QString::fromLatin1(name));
}

/// As the toolkit writes a key equivalent; Command is Control here.
QKeySequence keySequence(const MenuItem& item) {
  int modifiers = 0;
  if (item.keyEquivalentModifierMask & ModifierFlag::Command)
    modifiers |= Qt::ControlModifier;
  if (item.keyEquivalentModifierMask & ModifierFlag::Option)
    modifiers |= Qt::AltModifier;
  if (item.keyEquivalentModifierMask & ModifierFlag::Shift)
    modifiers |= Qt::ShiftModifier;
  return QKeySequence(modifiers | item.keyEquivalent.at(0).toUpper().unicode());
}

/// Runs the item whose key equivalent is pressed. The toolkit shows an open menu's shortcuts but doesn't act
/// on them.
class KeyEquivalents : public QObject {
 public:
  explicit KeyEquivalents(QMenu* menu) : QObject(menu) { menu->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress)
      return false;
    const auto* press = static_cast<QKeyEvent*>(event);
    auto modifiers =
        press->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (modifiers.testFlag(Qt::MetaModifier))
      modifiers = (modifiers & ~Qt::KeyboardModifiers(Qt::MetaModifier)) | Qt::ControlModifier;
    const QKeySequence pressed(static_cast<int>(modifiers) | press->key());
    auto* const menu = static_cast<QMenu*>(watched);
    for (QAction* action : menu->actions()) {
      if (action->shortcut().isEmpty() || action->shortcut() != pressed || !action->isEnabled())
        continue;
      menu->close();
      action->trigger();
      return true;
    }
    return false;
  }
};

/// The toolkit cuts a menu short whose place is below the part of the screen that the bars leave free.
QPoint aboveBars(const QPoint& place) {
  const QScreen* const screen = QGuiApplication::screenAt(place);
  return screen ? QPoint(place.x(), std::min(place.y(), screen->availableGeometry().bottom())) : place;
}

void fill(QMenu& target, const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    if (item.isSeparator) {
      target.addSeparator();
      continue;
    }
    if (item.submenu) {
      fill(*target.addMenu(item.title), *item.submenu);
      continue;
    }
    // A title is text to be shown, not a place for the toolkit's mnemonic mark.
    QAction* const action = target.addAction(QString(item.title).replace(u'&', QStringLiteral("&&")));
    action->setEnabled(item.isEnabled);
    action->setMenuRole(QAction::NoRole);
    if (!item.keyEquivalent.isEmpty()) {
      action->setShortcut(keySequence(item));
      action->setShortcutVisibleInContextMenu(true);
    }
    if (item.action)
      QObject::connect(action, &QAction::triggered, action, item.action);
  }
}

}  // namespace

MenuPresenter::MenuPresenter() = default;

MenuPresenter::~MenuPresenter() {
  delete open;
}

void MenuPresenter::popUp(const std::shared_ptr<const Menu>& menu, const QPoint& position) {
  cancelTracking();
  beneath = MenuLayer::at(position);
  open = new QMenu(beneath.get());
  fill(*open, *menu);
  new KeyEquivalents(open);
  QObject::connect(open, &QMenu::aboutToHide, open, [this, menu = open.data()] {
    post(menuDidEndTrackingNotification);
    // Not at once: the chosen row's action has yet to run.
    menu->deleteLater();
    if (beneath)
      beneath.release()->deleteLater();
  });
  post(menuDidBeginTrackingNotification);
  open->popup(aboveBars(position));
}

void MenuPresenter::cancelTracking() {
  if (open)
    open->close();
}

}  // namespace platform
