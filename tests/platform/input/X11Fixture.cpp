#include "tests/platform/input/X11Fixture.h"

#include "platform/x11/X11Connection.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace testing_support {

void setLayout(const QString& layouts, const QString& options) {
  const int status = QProcess::execute(
      u"setxkbmap"_s, {u"-display"_s, QString::fromStdString(privateDisplay()), u"-layout"_s, layouts,
                       u"-option"_s, QString(), u"-option"_s, options});
  ASSERT_EQ(status, 0) << "setxkbmap is needed";
}

EventLog::EventLog() : connection(platform::x11Connection()), window(xcb_generate_id(connection)) {
  const auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  xcb_create_window(connection, 0, window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    screen->root_visual, 0, nullptr);
  // The newest filter is the first to see an event.
  QCoreApplication::instance()->installNativeEventFilter(this);
}

EventLog::~EventLog() {
  xcb_destroy_window(connection, window);
  xcb_flush(connection);
}

void EventLog::settle() {
  // Events come in order, so a message to ourselves comes after all before it.
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = XCB_ATOM_INTEGER;
  message.data.data32[0] = ++sent;
  xcb_send_event(connection, 0, window, 0, reinterpret_cast<const char*>(&message));
  xcb_flush(connection);
  until("all events are dealt with", [this] { return received == sent; });
  QCoreApplication::processEvents();
}

int EventLog::presses(int evdevCode) const {
  return static_cast<int>(std::ranges::count_if(keys, [&](const auto& event) {
    return event.response_type == XCB_KEY_PRESS && event.detail == evdevCode + platform::x11KeycodeOffset;
  }));
}

bool EventLog::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  const auto& own = *reinterpret_cast<const xcb_client_message_event_t*>(event);
  if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE && own.window == window) {
    received = own.data.data32[0];
    return true;
  }
  ++total;
  if (event->response_type == XCB_KEY_PRESS || event->response_type == XCB_KEY_RELEASE)
    keys.push_back(*reinterpret_cast<const xcb_key_press_event_t*>(event));
  return false;
}

}  // namespace testing_support
