#include "tools/screencapture/wayland/PlasmaWindows.h"

#include <algorithm>
#include <plasma-virtual-desktop.h>
#include <plasma-window-management.h>
#include <string_view>

namespace screencapture::wayland {

namespace {

// From this version on windows have names that the order of stacking refers to.
constexpr std::uint32_t oldestWindows = 13, newestWindows = 16, newestDesktops = 2;

}  // namespace

struct PlasmaWindows::Listeners {
  static PlasmaWindows& all(void* self) { return *static_cast<PlasmaWindows*>(self); }
  static Window& windowOf(void* self) { return *static_cast<Window*>(self); }

  static constexpr org_kde_plasma_window_listener window{
      .title_changed = [](void*, org_kde_plasma_window*, const char*) {},
      .app_id_changed = [](void*, org_kde_plasma_window*, const char*) {},
      .state_changed = [](void* self, org_kde_plasma_window*,
                          std::uint32_t state) { windowOf(self).state = state; },
      .virtual_desktop_changed = [](void*, org_kde_plasma_window*, std::int32_t) {},
      .themed_icon_name_changed = [](void*, org_kde_plasma_window*, const char*) {},
      .unmapped = [](void* self, org_kde_plasma_window*) { windowOf(self).frame = {}; },
      .initial_state = [](void*, org_kde_plasma_window*) {},
      .parent_window = [](void*, org_kde_plasma_window*, org_kde_plasma_window*) {},
      .geometry =
          [](void* self, org_kde_plasma_window*, std::int32_t x, std::int32_t y, std::uint32_t width,
             std::uint32_t height) {
            windowOf(self).frame = {x, y, static_cast<int>(width), static_cast<int>(height)};
          },
      .icon_changed = [](void*, org_kde_plasma_window*) {},
      .pid_changed = [](void*, org_kde_plasma_window*, std::uint32_t) {},
      .virtual_desktop_entered = [](void* self, org_kde_plasma_window*,
                                    const char* desktop) { windowOf(self).desktops.emplace_back(desktop); },
      .virtual_desktop_left = [](void* self, org_kde_plasma_window*,
                                 const char* desktop) { std::erase(windowOf(self).desktops, desktop); },
      .application_menu = [](void*, org_kde_plasma_window*, const char*, const char*) {},
      .activity_entered = [](void*, org_kde_plasma_window*, const char*) {},
      .activity_left = [](void*, org_kde_plasma_window*, const char*) {},
      .resource_name_changed = [](void*, org_kde_plasma_window*, const char*) {}};

  static constexpr org_kde_plasma_window_management_listener windows{
      .show_desktop_changed = [](void*, org_kde_plasma_window_management*, std::uint32_t) {},
      .window = [](void*, org_kde_plasma_window_management*, std::uint32_t) {},
      .stacking_order_changed = [](void*, org_kde_plasma_window_management*, wl_array*) {},
      .stacking_order_uuid_changed = [](void* self, org_kde_plasma_window_management*,
                                        const char* names) { all(self).order = names; },
      .window_with_uuid =
          [](void* self, org_kde_plasma_window_management* management, std::uint32_t, const char* name) {
            Window& added = all(self).windows[name];
            added.proxy = {org_kde_plasma_window_management_get_window_by_uuid(management, name),
                           {org_kde_plasma_window_destroy}};
            org_kde_plasma_window_add_listener(added.proxy.get(), &window, &added);
          }};

  static constexpr org_kde_plasma_virtual_desktop_listener desktop{
      .desktop_id = [](void*, org_kde_plasma_virtual_desktop*, const char*) {},
      .name = [](void*, org_kde_plasma_virtual_desktop*, const char*) {},
      .activated = [](void* self,
                      org_kde_plasma_virtual_desktop*) { static_cast<Desktop*>(self)->isCurrent = true; },
      .deactivated = [](void* self,
                        org_kde_plasma_virtual_desktop*) { static_cast<Desktop*>(self)->isCurrent = false; },
      .done = [](void*, org_kde_plasma_virtual_desktop*) {},
      .removed = [](void*, org_kde_plasma_virtual_desktop*) {}};

  static constexpr org_kde_plasma_virtual_desktop_management_listener desktops{
      .desktop_created =
          [](void* self, org_kde_plasma_virtual_desktop_management* management, const char* name,
             std::uint32_t) {
            Desktop& added = all(self).desktops[name];
            added.proxy = {org_kde_plasma_virtual_desktop_management_get_virtual_desktop(management, name),
                           {org_kde_plasma_virtual_desktop_destroy}};
            org_kde_plasma_virtual_desktop_add_listener(added.proxy.get(), &desktop, &added);
          },
      .desktop_removed = [](void*, org_kde_plasma_virtual_desktop_management*, const char*) {},
      .done = [](void*, org_kde_plasma_virtual_desktop_management*) {},
      .rows = [](void*, org_kde_plasma_virtual_desktop_management*, std::uint32_t) {}};
};

PlasmaWindows::PlasmaWindows(const Display& display) {
  if (display.globals.version(org_kde_plasma_window_management_interface) < oldestWindows)
    return;
  windowManagement = {display.globals.bind<org_kde_plasma_window_management>(
                          org_kde_plasma_window_management_interface, newestWindows),
                      {org_kde_plasma_window_management_destroy}};
  org_kde_plasma_window_management_add_listener(windowManagement.get(), &Listeners::windows, this);
  desktopManagement = {display.globals.bind<org_kde_plasma_virtual_desktop_management>(
                           org_kde_plasma_virtual_desktop_management_interface, newestDesktops),
                       {org_kde_plasma_virtual_desktop_management_destroy}};
  if (desktopManagement)
    org_kde_plasma_virtual_desktop_management_add_listener(desktopManagement.get(), &Listeners::desktops,
                                                           this);
}

PlasmaWindows::~PlasmaWindows() = default;

bool PlasmaWindows::isSeen(const Window& window) const {
  constexpr std::uint32_t unseen = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED |
                                   ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPTASKBAR;  // bars and the like
  const auto isCurrent = [this](const std::string& name) {
    const auto found = desktops.find(name);
    return found == desktops.end() || found->second.isCurrent;
  };
  return !window.frame.isEmpty() && !(window.state & unseen) &&
         (window.desktops.empty() || std::ranges::any_of(window.desktops, isCurrent));
}

std::optional<std::vector<Rectangle>> PlasmaWindows::frames(Display& display) {
  if (!windowManagement)
    return std::nullopt;
  display.roundTrip();  // what there is
  display.roundTrip();  // and what is to be said of each
  std::vector<Rectangle> frames;
  std::string_view names = order;
  while (!names.empty()) {
    const std::size_t end = std::min(names.find(';'), names.size());
    const auto found = windows.find(std::string(names.substr(0, end)));
    names.remove_prefix(std::min(end + 1, names.size()));
    if (found != windows.end() && isSeen(found->second))
      frames.push_back(found->second.frame);
  }
  std::ranges::reverse(frames);
  return frames;
}

}  // namespace screencapture::wayland
