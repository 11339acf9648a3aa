#include "platform/input/X11KeyboardWatch.h"

#include "platform/input/XcbXkb.h"

#include <QCoreApplication>

namespace platform {

X11KeyboardWatch::X11KeyboardWatch(xcb_connection_t* connection, std::function<void()> onChange)
    : onChange(std::move(onChange)) {
  if (const auto* const xkb = xcb_get_extension_data(connection, &xcb_xkb_id); xkb && xkb->present)
    xkbFirstEvent = xkb->first_event;
  QCoreApplication::instance()->installNativeEventFilter(this);
}

bool X11KeyboardWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  // An event of XKEYBOARD tells its own type in the byte after.
  const bool isChange = event->response_type == XCB_MAPPING_NOTIFY ||
                        (event->response_type == xkbFirstEvent &&
                         (event->pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event->pad0 == XCB_XKB_MAP_NOTIFY));
  if (isChange && !telling.isPending())
    telling = MainQueue::main().asyncAfter({}, onChange);
  return false;
}

}  // namespace platform
