#include "platform/input/KeyboardLayout.h"

#include "platform/input/X11KeyboardLayout.h"
#include "platform/x11/X11Connection.h"

namespace platform {
namespace {

std::shared_ptr<const KeyboardLayout>& currentSlot() {
  static std::shared_ptr<const KeyboardLayout> slot;
  return slot;
}

}  // namespace

const KeyboardLayout* KeyboardLayout::current() {
  return currentSlot().get();
}

void KeyboardLayout::setCurrent(std::shared_ptr<const KeyboardLayout> layout) {
  currentSlot() = std::move(layout);
}

std::shared_ptr<const KeyboardLayout> KeyboardLayout::forDesktop() {
  xcb_connection_t* const connection = x11Connection();
  return connection ? std::make_shared<X11KeyboardLayout>(connection) : nullptr;
}

}  // namespace platform
