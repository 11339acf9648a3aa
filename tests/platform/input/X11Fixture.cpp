#include "tests/platform/input/X11Fixture.h"

#include "platform/input/X11Connection.h"
#include "platform/input/XcbXkb.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>

namespace testing_support {

bool waitUntil(const std::function<bool()>& condition) {
  constexpr int tooLongMilliseconds = 20'000;
  QElapsedTimer elapsed;
  elapsed.start();
  while (!condition()) {
    if (elapsed.elapsed() > tooLongMilliseconds)
      return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
  }
  return true;
}

void setLayout(const QString& layouts) {
  const int status = QProcess::execute(QStringLiteral("setxkbmap"),
                                       {QStringLiteral("-display"), QString::fromStdString(privateDisplay()),
                                        QStringLiteral("-layout"), layouts});
  ASSERT_EQ(status, 0) << "setxkbmap is needed";
}

OtherClient::OtherClient() : connection(xcb_connect(privateDisplay().c_str(), nullptr)) {
  root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
  roundTrip();
}

OtherClient::~OtherClient() {
  xcb_disconnect(connection);
}

void OtherClient::roundTrip() {
  std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

OtherClient::Outcome OtherClient::grabKeyboard() {
  const platform::XcbPointer<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
      connection,
      xcb_grab_keyboard(connection, 0, root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
      nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS ? Outcome::Done : Outcome::Refused;
}

void OtherClient::ungrabKeyboard() {
  xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
  roundTrip();
}

OtherClient::Outcome OtherClient::grabKey(int evdevCode, uint16_t modifiers) {
  const auto keycode = static_cast<xcb_keycode_t>(evdevCode + platform::x11KeycodeOffset);
  const platform::XcbPointer<xcb_generic_error_t> error(
      xcb_request_check(connection, xcb_grab_key_checked(connection, 0, root, modifiers, keycode,
                                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
  return error ? Outcome::Refused : Outcome::Done;
}

void OtherClient::lockGroup(uint8_t group) {
  xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
  roundTrip();
}

void OtherClient::exchangeModifiers(size_t one, size_t other) {
  const platform::XcbPointer<xcb_get_modifier_mapping_reply_t> map(
      xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
  const size_t width = map->keycodes_per_modifier;
  xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(map.get());
  std::swap_ranges(keycodes + one * width, keycodes + (one + 1) * width, keycodes + other * width);
  const platform::XcbPointer<xcb_set_modifier_mapping_reply_t> reply(xcb_set_modifier_mapping_reply(
      connection, xcb_set_modifier_mapping(connection, static_cast<uint8_t>(width), keycodes), nullptr));
  ASSERT_TRUE(reply && reply->status == XCB_MAPPING_STATUS_SUCCESS);
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
  ASSERT_TRUE(waitUntil([this] { return received == sent; }));
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
