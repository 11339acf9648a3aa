#include "platform/desktop/ActivationToken.h"

#include "platform/base/Environment.h"
#include "platform/x11/X11Connection.h"

#include <QWidget>

namespace platform {
namespace {

struct KeptToken {
  QByteArray text;
};

QByteArray& kept() {
  return Environment::shared<KeptToken>([] { return std::make_shared<KeptToken>(); })->text;
}

/// A startup identifier ends in the time of the click or key press that it stands for; absent if this one
/// doesn't.
std::optional<quint32> x11TimeOf(const QByteArray& startupIdentifier) {
  const QByteArray mark = "_TIME";
  const qsizetype at = startupIdentifier.lastIndexOf(mark);
  bool isNumber = false;
  const quint32 time = at < 0 ? 0 : startupIdentifier.sliced(at + mark.size()).toUInt(&isNumber);
  return isNumber ? std::optional(time) : std::nullopt;
}

/// The toolkit asks too, but with the time of the last key or click that it has seen itself.
void askWindowManager(xcb_connection_t* connection, const QWidget& window, quint32 time) {
  constexpr uint32_t fromAnApplication = 1;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = static_cast<xcb_window_t>(window.internalWinId());
  message.type = x11Atom(connection, "_NET_ACTIVE_WINDOW");
  message.data.data32[0] = fromAnApplication;
  message.data.data32[1] = time;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_send_event(connection, false, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
}

}  // namespace

QByteArray ActivationToken::fromEnvironment() {
  QByteArray found;
  for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
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
  window.activateWindow();
  xcb_connection_t* const connection = x11Connection();
  if (const auto time = x11TimeOf(token); connection && time)
    askWindowManager(connection, window, *time);
}

}  // namespace platform
