#include "tests/support/WaylandOutput.h"

#include "platform/system/MappedFile.h"

#include <stdexcept>
#include <unistd.h>
#include <viewporter.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <wlr-screencopy-unstable-v1.h>

namespace testing_support {

namespace {

using platform::WaylandObject;

struct Frame {
  std::uint32_t format = 0;
  int width = 0;
  int height = 0;
  int stride = 0;
  bool isUpsideDown = false;
  enum { Waiting, Ready, Failed } state = Waiting;
};

Frame& frameOf(void* data) {
  return *static_cast<Frame*>(data);
}

constexpr zwlr_screencopy_frame_v1_listener frameListener{
    .buffer =
        [](void* data, auto*, std::uint32_t format, std::uint32_t width, std::uint32_t height,
           std::uint32_t stride) {
          frameOf(data) = {format, int(width), int(height), int(stride)};
        },
    .flags =
        [](void* data, auto*, std::uint32_t flags) {
          frameOf(data).isUpsideDown = flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
        },
    .ready = [](void* data, auto*, std::uint32_t, std::uint32_t,
                std::uint32_t) { frameOf(data).state = Frame::Ready; },
    .failed = [](void* data, auto*) { frameOf(data).state = Frame::Failed; },
    .damage = nullptr,
    .linux_dmabuf = nullptr,
    .buffer_done = nullptr};

QImage::Format formatOf(std::uint32_t format) {
  switch (format) {
    case WL_SHM_FORMAT_XRGB8888:
    case WL_SHM_FORMAT_ARGB8888:
      return QImage::Format_RGB32;
    case WL_SHM_FORMAT_XBGR8888:
    case WL_SHM_FORMAT_ABGR8888:
      return QImage::Format_RGBX8888;
    default:
      throw std::runtime_error("an output's picture has a format of its own: " + std::to_string(format));
  }
}

void check(bool holds) {
  if (!holds)
    throw std::runtime_error("the compositor refuses what a test does with its output");
}

/// Acknowledges the size that the compositor has given.
constexpr zwlr_layer_surface_v1_listener layerListener{
    .configure =
        [](void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
           std::uint32_t height) {
          zwlr_layer_surface_v1_ack_configure(layer, serial);
          *static_cast<QSize*>(data) = {int(width), int(height)};
        },
    .closed = [](void*, auto*) {}};

/// A buffer of so many bytes that this process has mapped too.
WaylandObject<wl_buffer> makeBuffer(const platform::WaylandGlobals& globals, int file, const Frame& shape) {
  const WaylandObject<wl_shm> shm(globals.bind<wl_shm>(wl_shm_interface, 1), {wl_shm_destroy});
  check(shm != nullptr);
  const WaylandObject<wl_shm_pool> pool(wl_shm_create_pool(shm.get(), file, shape.stride * shape.height),
                                        {wl_shm_pool_destroy});
  return {wl_shm_pool_create_buffer(pool.get(), 0, shape.width, shape.height, shape.stride, shape.format),
          {wl_buffer_destroy}};
}

}  // namespace

WaylandOutput::WaylandOutput(wl_display* connected, const platform::WaylandGlobals& offered,
                             const platform::WaylandGlobals::Global& global)
    : display(connected),
      globals(offered),
      output(offered.bind<wl_output>(global, wl_output_interface, 1), {wl_output_destroy}),
      layer(nullptr, {zwlr_layer_surface_v1_destroy}),
      viewport(nullptr, {wp_viewport_destroy}) {
}

QImage WaylandOutput::picture() const {
  const WaylandObject<zwlr_screencopy_manager_v1> manager(
      globals.bind<zwlr_screencopy_manager_v1>(zwlr_screencopy_manager_v1_interface, 1),
      {zwlr_screencopy_manager_v1_destroy});
  check(manager != nullptr);
  Frame frame;
  const WaylandObject<zwlr_screencopy_frame_v1> request(
      zwlr_screencopy_manager_v1_capture_output(manager.get(), 0, output.get()),
      {zwlr_screencopy_frame_v1_destroy});
  zwlr_screencopy_frame_v1_add_listener(request.get(), &frameListener, &frame);
  while (frame.width == 0 && frame.state == Frame::Waiting)
    check(wl_display_dispatch(display) >= 0);
  check(frame.width > 0);
  const platform::Descriptor file = platform::newFileInMemory("picture");
  check(ftruncate(file.get(), off_t{frame.stride} * frame.height) == 0);
  const auto memory = platform::MappedFile::of(file.get());
  check(memory.has_value());
  const auto copied = makeBuffer(globals, file.get(), frame);
  zwlr_screencopy_frame_v1_copy(request.get(), copied.get());
  while (frame.state == Frame::Waiting)
    check(wl_display_dispatch(display) >= 0);
  check(frame.state == Frame::Ready);
  const QImage shown(memory->bytes().data(), frame.width, frame.height, frame.stride, formatOf(frame.format));
  return (frame.isUpsideDown ? shown.mirrored() : shown).convertToFormat(QImage::Format_RGB32).copy();
}

void WaylandOutput::setBackground(const QImage& picture) {
  if (!surface)
    openBackground();
  const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
  const platform::Descriptor file = platform::newFileInMemory("background");
  const auto bytes = reinterpret_cast<const char*>(pixels.constBits());
  check(platform::writeAll(file.get(), platform::bytesOf({bytes, size_t(pixels.sizeInBytes())})) == 0);
  buffer = makeBuffer(globals, file.get(),
                      {WL_SHM_FORMAT_XRGB8888, pixels.width(), pixels.height(), int(pixels.bytesPerLine())});
  wl_surface_attach(surface.get(), buffer.get(), 0, 0);
  wl_surface_damage(surface.get(), 0, 0, INT32_MAX, INT32_MAX);
  wl_surface_commit(surface.get());
  check(wl_display_roundtrip(display) >= 0);
}

void WaylandOutput::openBackground() {
  const WaylandObject<wl_compositor> compositor(globals.bind<wl_compositor>(wl_compositor_interface, 4),
                                                {wl_compositor_destroy});
  const WaylandObject<zwlr_layer_shell_v1> shell(
      globals.bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 3), {zwlr_layer_shell_v1_destroy});
  const WaylandObject<wp_viewporter> viewporter(globals.bind<wp_viewporter>(wp_viewporter_interface, 1),
                                                {wp_viewporter_destroy});
  check(compositor && shell && viewporter);
  surface.reset(wl_compositor_create_surface(compositor.get()));
  viewport.reset(wp_viewporter_get_viewport(viewporter.get(), surface.get()));
  layer.reset(zwlr_layer_shell_v1_get_layer_surface(shell.get(), surface.get(), output.get(),
                                                    ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND, "background"));
  zwlr_layer_surface_v1_set_anchor(
      layer.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                       ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
  zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), -1);
  zwlr_layer_surface_v1_add_listener(layer.get(), &layerListener, &points);
  wl_surface_commit(surface.get());
  while (points.isEmpty())
    check(wl_display_dispatch(display) >= 0);
  wp_viewport_set_destination(viewport.get(), points.width(), points.height());
}

}  // namespace testing_support
