#include "tools/screencapture/wayland/OutputSurface.h"

#include "tools/screencapture/wayland/Rendering.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <viewporter.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <xdg-shell.h>

namespace screencapture::wayland {

namespace {

constexpr char nameForPeople[] = "screencapture";
constexpr char applicationId[] = "org.sorrel.Sorrel";

OutputSurface& surfaceOf(void* self) {
  return *static_cast<OutputSurface*>(self);
}

}  // namespace

struct OutputSurface::Listeners {
  static constexpr zwlr_layer_surface_v1_listener layer{
      [](void* self, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
         std::uint32_t height) {
        zwlr_layer_surface_v1_ack_configure(layer, serial);
        surfaceOf(self).configure({static_cast<int>(width), static_cast<int>(height)});
      },
      [](void* self, zwlr_layer_surface_v1*) { surfaceOf(self).closed = true; }};

  static constexpr xdg_toplevel_listener window{
      .configure =
          [](void* self, xdg_toplevel*, std::int32_t width, std::int32_t height, wl_array*) {
            surfaceOf(self).asked = {width, height};
          },
      .close = [](void* self, xdg_toplevel*) { surfaceOf(self).closed = true; },
      .configure_bounds = nullptr,
      .wm_capabilities = nullptr};

  static constexpr xdg_surface_listener windowSurface{
      [](void* self, xdg_surface* surface, std::uint32_t serial) {
        xdg_surface_ack_configure(surface, serial);
        surfaceOf(self).configure(surfaceOf(self).asked);
      }};

  static constexpr wl_callback_listener frame{[](void* self, wl_callback*, std::uint32_t) {
    OutputSurface& surface = surfaceOf(self);
    surface.frame.reset();
    surface.hasBeenSeen = true;
  }};
};

OutputSurface::OutputSurface(const Display& used, const Output& covered)
    : display(used),
      output(covered),
      own(wl_compositor_create_surface(used.compositor.get()), {wl_surface_destroy}),
      viewport(wp_viewporter_get_viewport(used.viewporter.get(), own.get()), {wp_viewport_destroy}) {
  if (display.layerShell)
    makeLayer();
  else
    makeWindow();
  wl_surface_commit(own.get());
}

OutputSurface::~OutputSurface() = default;

void OutputSurface::makeLayer() {
  layer = {zwlr_layer_shell_v1_get_layer_surface(display.layerShell.get(), own.get(), output.proxy.get(),
                                                 ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, nameForPeople),
           {zwlr_layer_surface_v1_destroy}};
  zwlr_layer_surface_v1_set_anchor(
      layer.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                       ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
  constexpr std::int32_t overBarsToo = -1;
  zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), overBarsToo);
  zwlr_layer_surface_v1_set_keyboard_interactivity(layer.get(),
                                                   ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
  zwlr_layer_surface_v1_add_listener(layer.get(), &Listeners::layer, this);
}

void OutputSurface::makeWindow() {
  windowSurface = {xdg_wm_base_get_xdg_surface(display.shell.get(), own.get()), {xdg_surface_destroy}};
  window = {xdg_surface_get_toplevel(windowSurface.get()), {xdg_toplevel_destroy}};
  xdg_surface_add_listener(windowSurface.get(), &Listeners::windowSurface, this);
  xdg_toplevel_add_listener(window.get(), &Listeners::window, this);
  xdg_toplevel_set_app_id(window.get(), applicationId);
  xdg_toplevel_set_title(window.get(), nameForPeople);
  xdg_toplevel_set_fullscreen(window.get(), output.proxy.get());
}

void OutputSurface::configure(Size given) {
  const Size whole{output.logical.width, output.logical.height};
  const Size before = size;
  size = given.width > 0 && given.height > 0 ? given : whole;
  isConfigured = true;
  if (hasBeenSeen || frame) {
    // A window learns its fullscreen size only once it is shown; that it is accepted takes a commit at once.
    if (size != before)
      wp_viewport_set_destination(viewport.get(), size.width, size.height);
    wl_surface_commit(own.get());
  } else {
    update();
  }
}

void OutputSurface::show(const FrozenScreen& screen, std::size_t which, const Layers& over) {
  frozen = &screen;
  number = which;
  layers = &over;
  place = screen.layout.places[which];
  hasChanged = true;
  update();
}

void OutputSurface::change(std::span<const Rectangle> parts) {
  for (const Rectangle& part : parts) {
    const Rectangle within = part.intersected(place);
    if (within.isEmpty())
      continue;
    hasChanged = true;
    for (Sheet& sheet : sheets)
      if (sheet.buffer)
        sheet.stale.push_back(within);
  }
  update();
}

void OutputSurface::update() {
  if (!frozen || !hasChanged || !isConfigured || closed || frame)
    return;
  Sheet* const sheet = freeSheet();
  if (!sheet)
    return;
  draw(*sheet);
  hasChanged = false;
  if (!hasBeenSeen)
    wp_viewport_set_destination(viewport.get(), size.width, size.height);
  frame = {wl_surface_frame(own.get()), {wl_callback_destroy}};
  wl_callback_add_listener(frame.get(), &Listeners::frame, this);
  sheet->buffer->isBusy = true;
  wl_surface_attach(own.get(), sheet->buffer->buffer(), 0, 0);
  wl_surface_commit(own.get());
}

/// One that the compositor doesn't read; null where it reads all that there is memory for.
OutputSurface::Sheet* OutputSurface::freeSheet() {
  for (Sheet& sheet : sheets) {
    if (!sheet.buffer) {
      // The second is made only when something moves.
      sheet.buffer =
          SharedBuffer::create(display.shm.get(), {place.width, place.height}, WL_SHM_FORMAT_XRGB8888);
      sheet.stale = {place};
    }
    if (sheet.buffer && !sheet.buffer->isBusy)
      return &sheet;
  }
  return nullptr;
}

void OutputSurface::draw(Sheet& sheet) {
  for (const Rectangle& part : std::exchange(sheet.stale, {})) {
    const std::vector<Fill> fills = layers->fills(part);
    for (int y = part.y; y < part.bottom(); ++y) {
      std::uint32_t* const row = sheet.buffer->row(y - place.y) + (part.x - place.x);
      frozen->copyRow(number, y, part.x, part.right(), row);
      blendRow(row, y, part.x, part.right(), fills, layers->pieces);
    }
    wl_surface_damage_buffer(own.get(), part.x - place.x, part.y - place.y, part.width, part.height);
  }
}

Point OutputSurface::onScreen(double x, double y) const {
  const auto scaled = [](double at, int length, int ownLength) {
    return static_cast<int>(std::floor(at * length / std::max(ownLength, 1)));
  };
  return place.nearestTo({place.x + scaled(x - logical().x, place.width, size.width),
                          place.y + scaled(y - logical().y, place.height, size.height)});
}

}  // namespace screencapture::wayland
