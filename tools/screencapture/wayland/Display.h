#pragma once

#include "platform/wayland/WaylandGlobals.h"
#include "tools/screencapture/wayland/Layout.h"
#include "tools/screencapture/wayland/Picture.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct wp_viewporter;
struct xdg_wm_base;
struct zwlr_layer_shell_v1;
struct zwlr_screencopy_manager_v1;
struct zxdg_output_v1;

namespace screencapture::wayland {

/// A monitor, as the compositor tells of it in the first turn after the connection.
struct Output {
  platform::WaylandObject<wl_output> proxy;
  platform::WaylandObject<zxdg_output_v1> extra;
  std::string name;  // such as "DP-1"; empty where it has none
  Rectangle logical;
  Transform transform;
  Size mode;  // its pixels before they are turned
  int wholeScale = 1;

  /// What is known of it once the compositor has told all.
  [[nodiscard]] Size uprightPixels() const;
};

/// The connection to the compositor, and what the tool needs of it.
class Display {
 public:
  /// Connects as the environment says, and asks for all outputs. Null where there is no compositor; what one
  /// lacks is said on standard error, and then null as well.
  [[nodiscard]] static std::unique_ptr<Display> open();
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  [[nodiscard]] wl_display* connection() const { return server.get(); }
  [[nodiscard]] bool isLost() const { return wl_display_get_error(connection()) != 0; }
  /// Handles what comes; waits for it, for so long at most, and not once there is something to be read from
  /// another file. False once the connection is lost.
  bool handleEvents(std::optional<std::chrono::milliseconds> patience, int other = -1);
  /// Waits until the compositor has done all that was asked for.
  void roundTrip();

  const platform::WaylandObject<wl_display> server;
  const platform::WaylandGlobals globals;
  const platform::WaylandObject<wl_compositor> compositor;
  const platform::WaylandObject<wl_shm> shm;
  const platform::WaylandObject<wp_viewporter> viewporter;
  const platform::WaylandObject<xdg_wm_base> shell;
  const platform::WaylandObject<zwlr_layer_shell_v1> layerShell;         // null where it isn't offered
  const platform::WaylandObject<zwlr_screencopy_manager_v1> screencopy;  // the same
  std::vector<std::unique_ptr<Output>> outputs;                          // at least one

 private:
  explicit Display(wl_display* connection);
  void askForOutputs();
  template <typename T>
  [[nodiscard]] platform::WaylandObject<T> bound(const wl_interface& interface, std::uint32_t newest,
                                                 void (*end)(T*)) const;
};

}  // namespace screencapture::wayland
