#pragma once

#include "platform/system/Xcb.h"
#include "tools/screencapture/selection/Geometry.h"

#include <optional>
#include <string_view>
#include <xcb/render.h>

namespace screencapture {

/// An answer of the X server; null where the request failed.
template <typename T>
using Reply = platform::XcbPointer<T>;

/// The connection to the X server and the screen to capture.
///
/// A wait for an answer costs a turn of the server, so those who need one send all their requests first.
class Display {
 public:
  /// Connects to the display that the environment names; empty where there is none.
  [[nodiscard]] static std::optional<Display> open();

  [[nodiscard]] xcb_connection_t* connection() const { return server.get(); }
  [[nodiscard]] const xcb_screen_t& screen() const { return *defaultScreen; }
  [[nodiscard]] xcb_window_t root() const { return defaultScreen->root; }
  [[nodiscard]] Size size() const {
    return {defaultScreen->width_in_pixels, defaultScreen->height_in_pixels};
  }
  [[nodiscard]] const xcb_setup_t& setup() const { return *xcb_get_setup(connection()); }
  [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection()) != 0; }
  /// Whether the server has an extension; waits for the answer unless it was asked before.
  [[nodiscard]] bool has(xcb_extension_t& extension) const;
  [[nodiscard]] std::uint32_t newId() const { return xcb_generate_id(connection()); }
  /// The number that stands for a name among X programs: first ask, then wait for it; none on failure.
  [[nodiscard]] xcb_intern_atom_cookie_t askForAtom(std::string_view name) const;
  [[nodiscard]] xcb_atom_t atom(xcb_intern_atom_cookie_t asked) const;
  void flush() const { xcb_flush(connection()); }

 private:
  Display(platform::XcbConnection connection, const xcb_screen_t* screen)
      : server(std::move(connection)), defaultScreen(screen) {}

  platform::XcbConnection server;
  const xcb_screen_t* defaultScreen;
};

/// Waits for the answer to a request, for example `reply(display, xcb_get_geometry_reply, cookie)`.
template <typename T, typename Cookie>
Reply<T> reply(const Display& display, T* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
               Cookie cookie) {
  return platform::xcbReply(display.connection(), wait, cookie);
}

inline xcb_rectangle_t toX(const Rectangle& area) {
  return {static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
          static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height)};
}

}  // namespace screencapture
