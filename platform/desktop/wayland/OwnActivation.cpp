#include "platform/desktop/wayland/OwnActivation.h"

#include "platform/desktop/wayland/LayerShell.h"
#include "platform/wayland/ClearPixel.h"
#include "platform/wayland/KeyboardArrival.h"
#include "platform/wayland/WaylandConnection.h"

#include <xdg-activation-v1.h>

namespace platform {
namespace {

/// Has the compositor answer until that is so; whether it came to be.
template <typename Condition>
bool waitUntil(wl_event_queue* queue, Condition isSo) {
  constexpr int patience = 20;  // answers
  for (int asked = 0; !isSo() && asked < patience; ++asked)
    if (wl_display_roundtrip_queue(waylandDisplay(), queue) < 0)
      return false;
  return isSo();
}

QByteArray askForToken(xdg_activation_v1* activation, wl_surface* surface, wl_seat* seat,
                       std::uint32_t serial, wl_event_queue* queue) {
  const WaylandObject<xdg_activation_token_v1> token(xdg_activation_v1_get_activation_token(activation),
                                                     {xdg_activation_token_v1_destroy});
  QByteArray given;
  static constexpr xdg_activation_token_v1_listener listener{
      [](void* text, xdg_activation_token_v1*, const char* told) { *static_cast<QByteArray*>(text) = told; }};
  xdg_activation_token_v1_add_listener(token.get(), &listener, &given);
  xdg_activation_token_v1_set_serial(token.get(), serial, seat);
  xdg_activation_token_v1_set_surface(token.get(), surface);
  xdg_activation_token_v1_commit(token.get());
  (void)waitUntil(queue, [&] { return !given.isEmpty(); });
  return given;
}

}  // namespace

bool canAskForOwnActivation() {
  return isLayerShellOffered() && waylandGlobals()->version(xdg_activation_v1_interface) > 0 && waylandSeat();
}

QByteArray ownActivationToken() {
  if (!canAskForOwnActivation() || !(waylandSeatCapabilities() & WL_SEAT_CAPABILITY_KEYBOARD))
    return {};
  const WaylandGlobals* const globals = waylandGlobals();
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const WaylandObject<wl_seat> seat(globals->bind<wl_seat>(wl_seat_interface, 1, queue.get()),
                                    {wl_seat_destroy});
  const WaylandObject<xdg_activation_v1> activation(
      globals->bind<xdg_activation_v1>(xdg_activation_v1_interface, 1, queue.get()),
      {xdg_activation_v1_destroy});
  const WaylandObject<wl_surface> surface(wl_compositor_create_surface(waylandCompositor()),
                                          {wl_surface_destroy});
  LayerRole role(*surface, nullptr, LayerRole::Extent::BetweenBars, {});
  const WaylandObject<wl_buffer> pixel = clearPixel(*globals);
  if (!role.size() || !pixel)
    return {};
  const KeyboardArrival keyboard(seat.get());
  role.setTakesKeyboard(true);
  wl_surface_attach(surface.get(), pixel.get(), 0, 0);
  wl_surface_commit(surface.get());
  if (!waitUntil(queue.get(), [&] { return keyboard.serial() != 0; }))
    return {};
  return askForToken(activation.get(), surface.get(), seat.get(), keyboard.serial(), queue.get());
}

}  // namespace platform
