#pragma once

#include <memory>

class QWindow;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;
struct zwp_keyboard_shortcuts_inhibitor_v1;

namespace platform {

/// Has the compositor leave its own hot keys alone while a window has the keyboard, as long as this lives.
/// Does nothing where the compositor can't, and on GNOME, which would put a question on the screen.
class ShortcutsInhibitor {
 public:
  explicit ShortcutsInhibitor(const QWindow& window);
  ~ShortcutsInhibitor();
  ShortcutsInhibitor(const ShortcutsInhibitor&) = delete;
  ShortcutsInhibitor& operator=(const ShortcutsInhibitor&) = delete;

 private:
  zwp_keyboard_shortcuts_inhibit_manager_v1* manager = nullptr;
  zwp_keyboard_shortcuts_inhibitor_v1* inhibitor = nullptr;
};

}  // namespace platform
