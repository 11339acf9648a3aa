#include "platform/input/wayland/WaylandLayoutSwitch.h"

#include "platform/input/wayland/WaylandKeyboard.h"

namespace platform {

WaylandLayoutSwitch::WaylandLayoutSwitch()
    : reading(MainQueue::main().asyncAfter({}, [this] {
        if (WaylandKeyboard* const keyboard = WaylandKeyboard::current())
          change = keyboard->observe([this] { read(); });
        read();
      })) {
}

void WaylandLayoutSwitch::read() {
  const Keyboard keyboard = readKeyboard();
  update(keyboard.keymap ? modifiersThatSwitchLayout(keyboard.keymap.get()) : std::vector<HotKeyModifiers>());
}

}  // namespace platform
