#include "platform/desktop/ActivationToken.h"

#include "platform/base/Environment.h"

#include <QWidget>

namespace platform {
namespace {

constexpr const char* waylandVariable = "XDG_ACTIVATION_TOKEN";

struct KeptToken {
  QByteArray text;
};

QByteArray& kept() {
  return Environment::shared<KeptToken>([] { return std::make_shared<KeptToken>(); })->text;
}

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
  // The toolkit looks for a token there, and nowhere else. On X11 it needs none: it asks with the time of the
  // last thing that happened on the screen.
  if (const QByteArray token = ActivationToken::take(); !token.isEmpty())
    qputenv(waylandVariable, token);
  window.activateWindow();
  qunsetenv(waylandVariable);
}

}  // namespace platform
