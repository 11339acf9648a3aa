#pragma once

#include "tools/screencapture/wayland/Display.h"

#include <map>
#include <optional>

struct org_kde_plasma_virtual_desktop;
struct org_kde_plasma_virtual_desktop_management;
struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

namespace screencapture::wayland {

/// The windows that KDE's compositor shows, which it tells to those programs whose desktop entry asks for
/// that.
class PlasmaWindows {
 public:
  /// Asks without waiting, if they are offered.
  explicit PlasmaWindows(const Display& display);
  ~PlasmaWindows();
  PlasmaWindows(const PlasmaWindows&) = delete;
  PlasmaWindows& operator=(const PlasmaWindows&) = delete;

  /// Waits for the answer: the windows' frames on the current desktop, in the compositor's unit, the topmost
  /// first. Nothing where they aren't offered.
  [[nodiscard]] std::optional<std::vector<Rectangle>> frames(Display& display);

 private:
  struct Listeners;
  struct Window {
    platform::WaylandObject<org_kde_plasma_window> proxy;
    Rectangle frame;
    std::uint32_t state = 0;
    std::vector<std::string> desktops;  // none: it is on all
  };
  struct Desktop {
    platform::WaylandObject<org_kde_plasma_virtual_desktop> proxy;
    bool isCurrent = false;
  };

  [[nodiscard]] bool isSeen(const Window& window) const;

  platform::WaylandObject<org_kde_plasma_window_management> windowManagement;
  platform::WaylandObject<org_kde_plasma_virtual_desktop_management> desktopManagement;
  std::map<std::string, Window> windows;  // by what KDE calls them
  std::map<std::string, Desktop> desktops;
  std::string order;  // their names, the lowest first, with semicolons between
};

}  // namespace screencapture::wayland
