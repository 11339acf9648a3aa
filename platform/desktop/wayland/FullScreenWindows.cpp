#include "platform/desktop/wayland/FullScreenWindows.h"

#include "platform/wayland/WaylandConnection.h"

#include <algorithm>
#include <deque>
#include <span>
#include <wlr-foreign-toplevel-management-unstable-v1.h>

namespace platform {

namespace {

using Handle = zwlr_foreign_toplevel_handle_v1;
using Manager = zwlr_foreign_toplevel_manager_v1;

struct Window {
  WaylandObject<Handle> handle;
  std::vector<const wl_output*> outputs;
  bool isFullScreen = false;
};

void noteState(void* window, Handle*, wl_array* states) {
  const std::span<const std::uint32_t> all(static_cast<const std::uint32_t*>(states->data),
                                           states->size / sizeof(std::uint32_t));
  static_cast<Window*>(window)->isFullScreen =
      std::ranges::find(all, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN) != all.end();
}

constexpr zwlr_foreign_toplevel_handle_v1_listener windowListener{
    .title = [](void*, Handle*, const char*) {},
    .app_id = [](void*, Handle*, const char*) {},
    .output_enter = [](void* window, Handle*,
                       wl_output* output) { static_cast<Window*>(window)->outputs.push_back(output); },
    .output_leave = [](void* window, Handle*,
                       wl_output* output) { std::erase(static_cast<Window*>(window)->outputs, output); },
    .state = noteState,
    .done = [](void*, Handle*) {},
    .closed = [](void* window, Handle*) { static_cast<Window*>(window)->isFullScreen = false; },
    .parent = [](void*, Handle*, Handle*) {}};

constexpr zwlr_foreign_toplevel_manager_v1_listener managerListener{
    .toplevel =
        [](void* windows, Manager*, Handle* handle) {
          Window& window = static_cast<std::deque<Window>*>(windows)->emplace_back(
              Window{WaylandObject<Handle>(handle, {zwlr_foreign_toplevel_handle_v1_destroy}), {}});
          zwlr_foreign_toplevel_handle_v1_add_listener(handle, &windowListener, &window);
        },
    .finished = [](void*, Manager*) {}};

}  // namespace

bool hasFullScreenWindow(const QScreen& screen) {
  constexpr std::uint32_t newestManager = 3;
  const WaylandGlobals* const globals = waylandGlobals();
  if (!globals)
    return false;
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  std::deque<Window> windows;  // whose places in memory stay
  const WaylandObject<Manager> manager(
      globals->bind<Manager>(zwlr_foreign_toplevel_manager_v1_interface, newestManager, queue.get()),
      {zwlr_foreign_toplevel_manager_v1_destroy});
  if (!manager)
    return false;
  zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &managerListener, &windows);
  wl_display_roundtrip_queue(waylandDisplay(), queue.get());
  zwlr_foreign_toplevel_manager_v1_stop(manager.get());
  // One that has only just become full-screen may be said to be on no output yet: it might be on any.
  return std::ranges::any_of(windows, [output = waylandOutput(screen)](const Window& window) {
    const auto& on = window.outputs;
    return window.isFullScreen && (on.empty() || std::ranges::find(on, output) != on.end());
  });
}

}  // namespace platform
