#include "platform/input/KeyboardLayout.h"

#include "platform/base/Environment.h"
#include "platform/input/X11KeyboardLayout.h"
#include "platform/input/wayland/WaylandKeyboardLayout.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

namespace platform {
const KeyboardLayout* KeyboardLayout::current() {
  return Environment::shared<const KeyboardLayout>([] { return nullptr; }).get();
}

std::shared_ptr<const KeyboardLayout> KeyboardLayout::forDesktop() {
  if (xcb_connection_t* const connection = x11Connection())
    return std::make_shared<X11KeyboardLayout>(connection);
  return waylandDisplay() ? std::make_shared<WaylandKeyboardLayout>() : nullptr;
}

}  // namespace platform
