#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <qpa/qplatformnativeinterface.h>

#include <algorithm>

namespace platform {

namespace {

/// nullptr where the toolkit's platform is another.
QPlatformNativeInterface* toolkit() {
  return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
                 QGuiApplication::platformName().startsWith(QLatin1String("wayland"))
             ? QGuiApplication::platformNativeInterface()
             : nullptr;
}

void* resource(const char* name) {
  QPlatformNativeInterface* const native = toolkit();
  return native ? native->nativeResourceForIntegration(name) : nullptr;
}

}  // namespace

wl_display* waylandDisplay() {
  return static_cast<wl_display*>(resource("wl_display"));
}

const WaylandGlobals* waylandGlobals() {
  wl_display* const display = waylandDisplay();
  if (!display)
    return nullptr;
  // Never ended: the toolkit's connection is gone before static objects are.
  static const auto* const globals = new WaylandGlobals(display);
  return globals;
}

wl_surface* waylandSurface(const QWindow& window) {
  QPlatformNativeInterface* const native = toolkit();
  return native ? static_cast<wl_surface*>(
                      native->nativeResourceForWindow("surface", const_cast<QWindow*>(&window)))
                : nullptr;
}

wl_output* waylandOutput(const QScreen& screen) {
  QPlatformNativeInterface* const native = toolkit();
  return native ? static_cast<wl_output*>(
                      native->nativeResourceForScreen("output", const_cast<QScreen*>(&screen)))
                : nullptr;
}

wl_seat* waylandSeat() {
  return static_cast<wl_seat*>(resource("wl_seat"));
}

wl_compositor* waylandCompositor() {
  return static_cast<wl_compositor*>(resource("compositor"));
}

std::uint32_t waylandSeatCapabilities() {
  // On a queue of its own, so that no other events are handled meanwhile.
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const std::uint32_t version =
      std::min<std::uint32_t>(waylandGlobals()->version(wl_seat_interface), WL_SEAT_RELEASE_SINCE_VERSION);
  const WaylandObject<wl_seat> seat(
      waylandGlobals()->bind<wl_seat>(wl_seat_interface, version, queue.get()),
      {version == WL_SEAT_RELEASE_SINCE_VERSION ? wl_seat_release : wl_seat_destroy});
  if (!seat)
    return 0;
  std::uint32_t capabilities = 0;
  static constexpr wl_seat_listener listener{
      [](void* answer, wl_seat*, std::uint32_t told) { *static_cast<std::uint32_t*>(answer) = told; },
      [](void*, wl_seat*, const char*) {}};
  wl_seat_add_listener(seat.get(), &listener, &capabilities);
  wl_display_roundtrip_queue(waylandDisplay(), queue.get());
  return capabilities;
}

std::uint32_t waylandInputSerial() {
  // The toolkit answers with a number in the shape of a pointer.
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(resource("serial")));
}

}  // namespace platform
