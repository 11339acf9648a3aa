#include "platform/input/X11LayoutSwitch.h"

#include "platform/input/XkbKeymap.h"

namespace platform {

X11LayoutSwitch::X11LayoutSwitch(xcb_connection_t* connection)
    : connection(connection),
      watch(connection, [this] { read(); }),
      firstReading(MainQueue::main().asyncAfter({}, [this] { read(); })) {
}

void X11LayoutSwitch::read() {
  const XkbKeymap keymap = readX11Keymap(connection);
  update(keymap ? modifiersThatSwitchLayout(keymap.get()) : std::vector<HotKeyModifiers>());
}

}  // namespace platform
