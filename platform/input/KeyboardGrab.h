#pragma once

#include <QtGlobal>

#include <memory>

namespace platform {

class ShortcutsInhibitor;

/// Holds the keyboard for one window of this program, as long as it lives: every key comes to that window as
/// if it were typed there, also those that the window manager or another program waits for. The desktop takes
/// it back by itself if the window goes off the screen, or the program ends.
///
/// Where the keyboard can't be had, because another program holds it or the desktop has no such thing, the
/// window hears what it hears anyway.
class KeyboardGrab {
 public:
  /// `window` is the native number (QWidget::winId) of a window that is on the screen.
  explicit KeyboardGrab(quintptr window);
  ~KeyboardGrab();
  KeyboardGrab(const KeyboardGrab&) = delete;
  KeyboardGrab& operator=(const KeyboardGrab&) = delete;

 private:
  bool isHeld = false;
  std::unique_ptr<ShortcutsInhibitor> inhibitor;  // which does it on Wayland
};

}  // namespace platform
