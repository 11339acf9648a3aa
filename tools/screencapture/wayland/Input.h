#pragma once

#include "tools/screencapture/selection/HeldKeys.h"
#include "tools/screencapture/wayland/Keyboard.h"
#include "tools/screencapture/wayland/Overlay.h"

#include <chrono>

namespace screencapture::wayland {

/// Turns what the seat's pointer and keyboard do on the overlay into gestures.
///
/// The compositor tells where the pointer is only once the overlay lies under it, and lets nobody move it.
/// Where keys move it, it stays where it is, and its look moves alone; so do the gestures that follow.
class Input {
 public:
  /// All that is given must live as long.
  Input(const Display& display, const Overlay& overlay);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// Whom to feed from now on; nobody at first.
  void feed(Gestures* gestures) { fed = gestures; }
  /// Where the pointer is; nothing before the compositor has told.
  [[nodiscard]] std::optional<Point> pointer() const { return position; }
  /// The pointer's look from now on, for one physical pixel of `scale` logical ones.
  void setCursor(const Artwork& look, double scale);

  /// Repeats a held key if it is time to; how long until it is the next time, nothing while no key is held.
  std::optional<std::chrono::milliseconds> repeat();

 private:
  using Clock = std::chrono::steady_clock;
  struct Listeners;
  struct Repeat {
    std::uint8_t code = 0;
    Clock::time_point due;
  };

  void enter(std::uint32_t serial, const wl_surface* surface, double x, double y);
  void move(double x, double y);
  void press(std::uint32_t button, bool isDown);
  void key(std::uint32_t code, bool isDown);
  void showCursor();
  void followJump();

  const Display& display;
  const Overlay& overlay;
  Gestures* fed = nullptr;

  // Bound here, not before: what it can do is told once, and there may be no one to hear it.
  const platform::WaylandObject<wl_seat> seat;
  platform::WaylandObject<wl_pointer> pointerDevice;
  platform::WaylandObject<wl_keyboard> keyboardDevice;
  const OutputSurface* under = nullptr;
  std::optional<Point> position;
  Point offset;  // of the gestures from the pointer
  std::uint32_t entered = 0;

  const platform::WaylandObject<wl_surface> cursorSurface;
  const platform::WaylandObject<wp_viewport> cursorViewport;
  std::unique_ptr<SharedBuffer> cursor;
  Point hotSpot;  // in physical pixels
  double cursorScale = 1;

  Keyboard keyboard;
  HeldKeys heldKeys;
  std::optional<Repeat> repeated;
  std::chrono::milliseconds repeatDelay{600};
  std::chrono::milliseconds repeatInterval{40};  // 0 where nothing is to be repeated
};

}  // namespace screencapture::wayland
