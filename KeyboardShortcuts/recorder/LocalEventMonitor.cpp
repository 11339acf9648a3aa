#include "KeyboardShortcuts/recorder/LocalEventMonitor.h"

#include "platform/input/KeyEvents.h"

#include <QContextMenuEvent>
#include <QCoreApplication>

namespace KeyboardShortcuts {
namespace {

KeyMeaning meaningOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Tab:
      return KeyMeaning::Tab;
    case Qt::Key_Escape:
      return KeyMeaning::Escape;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      return KeyMeaning::Delete;
    default:
      return KeyMeaning::Other;
  }
}

std::optional<platform::EventType> releaseOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return platform::EventType::LeftMouseUp;
    case Qt::RightButton:
      return platform::EventType::RightMouseUp;
    default:
      return std::nullopt;
  }
}

}  // namespace

LocalEventMonitor::LocalEventMonitor(Callback callback) : callback(std::move(callback)) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool LocalEventMonitor::eventFilter(QObject*, QEvent* event) {
  const Callback running = callback;  // outlives this object
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();
      return true;
    case QEvent::ContextMenu:
      // The menu key's, which comes as a key too.
      return static_cast<const QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard;
    case QEvent::KeyPress: {
      const auto& key = *static_cast<const QKeyEvent*>(event);
      return isRepeat(key) || running({platform::eventFrom(key), meaningOf(key), {}}) == Outcome::Dropped;
    }
    case QEvent::KeyRelease:
      lastRelease = {static_cast<const QKeyEvent*>(event)->nativeScanCode(),
                     static_cast<const QKeyEvent*>(event)->timestamp()};
      return false;
    case QEvent::MouseButtonRelease: {
      const auto& mouse = *static_cast<const QMouseEvent*>(event);
      const auto type = releaseOf(mouse.button());
      return type && running({{*type, 0, {}}, KeyMeaning::Other, mouse.globalPosition()}) == Outcome::Dropped;
    }
    default:
      return false;
  }
}

/// The toolkit takes a held key for one that is let go and pressed anew, at the same time, if it hears of the
/// second a little late.
bool LocalEventMonitor::isRepeat(const QKeyEvent& press) const {
  return press.isAutoRepeat() ||
         (lastRelease && *lastRelease == Release{press.nativeScanCode(), press.timestamp()});
}

}  // namespace KeyboardShortcuts
