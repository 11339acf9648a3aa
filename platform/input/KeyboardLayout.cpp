#include "platform/input/KeyboardLayout.h"

#include "platform/base/Environment.h"
#include "platform/input/X11KeyboardLayout.h"
#include "platform/x11/X11Connection.h"

namespace platform {
const KeyboardLayout* KeyboardLayout::current() {
  return Environment::shared<const KeyboardLayout>([] { return nullptr; }).get();
}

std::shared_ptr<const KeyboardLayout> KeyboardLayout::forDesktop() {
  xcb_connection_t* const connection = x11Connection();
  return connection ? std::make_shared<X11KeyboardLayout>(connection) : nullptr;
}

}  // namespace platform
