#include "platform/desktop/ActivationToken.h"

#include "platform/base/Environment.h"
#include "platform/base/MainQueue.h"
#include "platform/desktop/wayland/OwnActivation.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace platform {
namespace {

constexpr const char* waylandVariable = "XDG_ACTIVATION_TOKEN";

struct KeptToken {
  QByteArray text;
};

QByteArray& kept() {
  return Environment::shared<KeptToken>([] { return std::make_shared<KeptToken>(); })->text;
}

/// The toolkit looks for a token there, and nowhere else. On X11 it needs none: it asks with the time of the
/// last thing that happened on the screen.
void activate(QWidget& window, const QByteArray& token) {
  if (!token.isEmpty())
    qputenv(waylandVariable, token);
  window.activateWindow();
  qunsetenv(waylandVariable);
}

/// Activates a window that has come to the screen without the keyboard. Before it is there, compositors don't
/// listen. Goes with the window.
class LaterActivation : public QObject {
 public:
  explicit LaterActivation(QWidget& shown) : QObject(&shown), window(shown) {
    window.windowHandle()->installEventFilter(this);
    if (window.windowHandle()->isExposed())
      wait();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Expose && window.windowHandle()->isExposed())
      wait();
    return QObject::eventFilter(watched, event);
  }

 private:
  void wait() {
    window.windowHandle()->removeEventFilter(this);
    constexpr std::chrono::milliseconds keyboardsWay{100};  // longer than it takes where it comes unasked
    due = MainQueue::main().asyncAfter(keyboardsWay, [this] {
      if (!QGuiApplication::focusWindow())
        activate(window, ownActivationToken());
      deleteLater();
    });
  }

  QWidget& window;
  WorkItem due;
};

}  // namespace

QByteArray ActivationToken::fromEnvironment() {
  QByteArray found;
  for (const char* variable : {waylandVariable, "DESKTOP_STARTUP_ID"}) {
    if (found.isEmpty())
      found = qgetenv(variable);
    qunsetenv(variable);
  }
  return found;
}

void ActivationToken::keep(const QByteArray& token) {
  kept() = token;
}

QByteArray ActivationToken::take() {
  return std::exchange(kept(), {});
}

void askForKeyboard(QWidget& window) {
  const QByteArray token = ActivationToken::take();
  // With the keyboard, the toolkit gets a token by itself.
  if (token.isEmpty() && canAskForOwnActivation() && !QGuiApplication::focusWindow())
    new LaterActivation(window);
  else
    activate(window, token);
}

}  // namespace platform
