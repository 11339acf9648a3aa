#include "platform/wayland/KeyboardArrival.h"

#include <unistd.h>

namespace platform {

KeyboardArrival::KeyboardArrival(wl_seat* seat)
    : keyboard(wl_seat_get_keyboard(seat), {wl_keyboard_destroy}) {
  static constexpr wl_keyboard_listener listener{
      .keymap = [](void*, auto*, auto, int file, auto) { close(file); },
      .enter = [](void* serial, auto*, std::uint32_t number, auto*,
                  auto*) { *static_cast<std::uint32_t*>(serial) = number; },
      .leave = [](void*, auto*, auto, auto*) {},
      .key = [](void*, auto*, auto, auto, auto, auto) {},
      .modifiers = [](void*, auto*, auto, auto, auto, auto, auto) {},
      .repeat_info = [](void*, auto*, auto, auto) {}};
  wl_keyboard_add_listener(keyboard.get(), &listener, &arrived);
}

}  // namespace platform
