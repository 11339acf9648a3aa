#include "platform/wayland/WaylandGlobals.h"

#include <algorithm>

namespace platform {

namespace {

void note(void* list, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
  static_cast<std::vector<WaylandGlobals::Global>*>(list)->push_back({name, interface, version});
}

void ignore(void*, wl_registry*, std::uint32_t) {
}

constexpr wl_registry_listener listener{note, ignore};

}  // namespace

WaylandGlobals::WaylandGlobals(wl_display* display) {
  // Asked on a queue of its own, so that nobody else's events are handled meanwhile.
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(display), {wl_event_queue_destroy});
  const WaylandObject<void> wrapper(wl_proxy_create_wrapper(display), {wl_proxy_wrapper_destroy});
  wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper.get()), queue.get());
  const WaylandObject<wl_registry> asked(wl_display_get_registry(static_cast<wl_display*>(wrapper.get())),
                                         {wl_registry_destroy});
  wl_registry_add_listener(asked.get(), &listener, &globals);
  // To bind from. Nobody hears what this one tells.
  registry = WaylandObject<wl_registry>(wl_display_get_registry(display), {wl_registry_destroy});
  wl_display_roundtrip_queue(display, queue.get());
}

std::uint32_t WaylandGlobals::version(const wl_interface& interface) const {
  const auto found = std::find_if(globals.begin(), globals.end(),
                                  [&](const Global& global) { return global.interface == interface.name; });
  return found == globals.end() ? 0 : found->version;
}

void* WaylandGlobals::bindAny(const Global& global, const wl_interface& interface, std::uint32_t newestKnown,
                              wl_event_queue* queue) const {
  // What is bound inherits its registry's queue.
  const WaylandObject<void> wrapper(wl_proxy_create_wrapper(registry.get()), {wl_proxy_wrapper_destroy});
  wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper.get()), queue);
  return wl_registry_bind(static_cast<wl_registry*>(wrapper.get()), global.name, &interface,
                          std::min(global.version, newestKnown));
}

}  // namespace platform
