#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <wayland-client.h>

namespace platform {

/// Ends an object of a protocol by a function of its own: `WaylandObject<wl_surface>(made,
/// {wl_surface_destroy})`.
template <typename T>
struct WaylandEnd {
  void (*end)(T*) = nullptr;
  void operator()(T* object) const { end(object); }
};
template <typename T>
using WaylandObject = std::unique_ptr<T, WaylandEnd<T>>;

/// What a compositor offered when it was asked.
class WaylandGlobals {
 public:
  struct Global {
    std::uint32_t name = 0;
    std::string interface;
    std::uint32_t version = 0;
  };

  /// Asks and waits for the answer, apart from all other events of the connection, which must outlive this.
  explicit WaylandGlobals(wl_display* display);

  [[nodiscard]] const std::vector<Global>& all() const { return globals; }
  /// The version that is offered; 0 where the interface isn't offered at all.
  [[nodiscard]] std::uint32_t version(const wl_interface& interface) const;

  /// The first global of an interface, in the newest version that both sides know; null where it isn't
  /// offered. Its events come on `queue`, if that is null on the connection's default queue.
  template <typename T>
  [[nodiscard]] T* bind(const wl_interface& interface, std::uint32_t newestKnown,
                        wl_event_queue* queue = nullptr) const {
    for (const Global& global : globals)
      if (global.interface == interface.name)
        return bind<T>(global, interface, newestKnown, queue);
    return nullptr;
  }
  template <typename T>
  [[nodiscard]] T* bind(const Global& global, const wl_interface& interface, std::uint32_t newestKnown,
                        wl_event_queue* queue = nullptr) const {
    return static_cast<T*>(bindAny(global, interface, newestKnown, queue));
  }

 private:
  [[nodiscard]] void* bindAny(const Global& global, const wl_interface& interface, std::uint32_t newestKnown,
                              wl_event_queue* queue) const;

  WaylandObject<wl_registry> registry;
  std::vector<Global> globals;
};

}  // namespace platform
