#include "platform/desktop/panel/PointerButtons.h"

#include "platform/x11/X11Connection.h"

#include <QGuiApplication>

#include <xcb/xinput.h>

namespace platform {
namespace {

/// The program asks for the events once, however many of its parts hear of them.
int listeners = 0;

bool isWheel(quint32 button) {
  return button >= 4 && button <= 7;
}

}  // namespace

PointerButtons::PointerButtons(std::function<void(Change)> handler) : onChange(std::move(handler)) {
  xcb_connection_t* const connection = x11Connection();
  const auto* const data = connection ? xcb_get_extension_data(connection, &xcb_input_id) : nullptr;
  if (!data || !data->present)
    return;
  // By its own number: what the program asks of all pointers together is asked elsewhere, and only the last
  // wish for the same device counts.
  const auto asked = xcbAsk(connection, xcb_input_xi_get_client_pointer,
                            xcb_input_xi_get_client_pointer_reply, XCB_WINDOW_NONE);
  if (!asked || !asked->set)
    return;
  pointer = asked->deviceid;
  extension = data->major_opcode;
  if (++listeners == 1)
    select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
  qGuiApp->installNativeEventFilter(this);
}

PointerButtons::~PointerButtons() {
  if (extension < 0)
    return;
  qGuiApp->removeNativeEventFilter(this);
  if (--listeners == 0)
    select(0);
}

void PointerButtons::select(quint32 events) const {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return;
  const struct {
    xcb_input_event_mask_t head;
    quint32 events;
  } mask{{pointer, 1}, events};
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_input_xi_select_events(connection, root, 1, &mask.head);
  xcb_flush(connection);
}

bool PointerButtons::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_input_raw_button_press_event_t*>(message);
  if (event->response_type != XCB_GE_GENERIC || event->extension != extension)
    return false;
  const bool isPress = event->event_type == XCB_INPUT_RAW_BUTTON_PRESS;
  if (!isPress && event->event_type != XCB_INPUT_RAW_BUTTON_RELEASE)
    return false;
  if (!isWheel(event->detail)) {
    const auto handler = onChange;  // outlives this object
    handler(isPress ? Change::Pressed : Change::Released);
  }
  return false;  // others may listen too
}

}  // namespace platform
