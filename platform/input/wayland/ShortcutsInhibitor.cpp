#include "platform/input/wayland/ShortcutsInhibitor.h"

#include "platform/input/DesktopHotKeys.h"
#include "platform/wayland/WaylandConnection.h"

#include <keyboard-shortcuts-inhibit-unstable-v1.h>

namespace platform {

ShortcutsInhibitor::ShortcutsInhibitor(const QWindow& window) {
  const WaylandGlobals* const globals = waylandGlobals();
  wl_surface* const surface = waylandSurface(window);
  wl_seat* const seat = waylandSeat();
  if (!globals || !surface || !seat || runningHotKeyDesktop() == HotKeyDesktop::Gnome)
    return;
  manager = globals->bind<zwp_keyboard_shortcuts_inhibit_manager_v1>(
      zwp_keyboard_shortcuts_inhibit_manager_v1_interface, 1);
  if (manager)
    inhibitor = zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(manager, surface, seat);
}

ShortcutsInhibitor::~ShortcutsInhibitor() {
  if (inhibitor)
    zwp_keyboard_shortcuts_inhibitor_v1_destroy(inhibitor);
  if (manager)
    zwp_keyboard_shortcuts_inhibit_manager_v1_destroy(manager);
}

}  // namespace platform
