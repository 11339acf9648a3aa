#include "tools/clipboardkeeper/wayland/DataControlOwner.h"

#include <wlr-data-control-unstable-v1.h>

namespace clipboardkeeper {

namespace {

constexpr std::uint32_t newestManager = 2;

// What others have on the clipboard is none of our business, but each offer of it is an object to end. Not
// before its last event: the library forgets to free what was ended while an event that names it was waiting.
void endOffer(void*, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
  if (offer)
    zwlr_data_control_offer_v1_destroy(offer);
}
constexpr zwlr_data_control_device_v1_listener deviceListener{
    .data_offer = [](void*, auto*, auto*) {},
    .selection = endOffer,
    .finished = [](void* isOwner, auto*) { *static_cast<bool*>(isOwner) = false; },
    .primary_selection = endOffer};

}  // namespace

std::unique_ptr<ClipboardOwner> DataControlOwner::take(const std::vector<platform::ClipboardForm>& contents) {
  wl_display* const display = connect();
  if (!display)
    return nullptr;
  std::unique_ptr<DataControlOwner> owner(new DataControlOwner(display, contents));
  return owner->own() ? std::move(owner) : nullptr;
}

DataControlOwner::DataControlOwner(wl_display* connected,
                                   const std::vector<platform::ClipboardForm>& contents)
    : WaylandOwner(connected, contents),
      manager(
          globals.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, newestManager),
          {zwlr_data_control_manager_v1_destroy}),
      device(nullptr, {zwlr_data_control_device_v1_destroy}),
      source(nullptr, {zwlr_data_control_source_v1_destroy}) {
}

bool DataControlOwner::own() {
  if (!seat || !manager)
    return false;
  static constexpr zwlr_data_control_source_v1_listener sourceListener{
      .send =
          [](void* owner, auto*, const char* target, int pipe) {
            static_cast<DataControlOwner*>(owner)->startTransfer(target, platform::Descriptor(pipe));
          },
      .cancelled = [](void* owner, auto*) { static_cast<DataControlOwner*>(owner)->isOwner = false; }};
  device.reset(zwlr_data_control_manager_v1_get_data_device(manager.get(), seat.get()));
  zwlr_data_control_device_v1_add_listener(device.get(), &deviceListener, &isOwner);
  source.reset(zwlr_data_control_manager_v1_create_data_source(manager.get()));
  zwlr_data_control_source_v1_add_listener(source.get(), &sourceListener, this);
  for (const platform::ClipboardForm& form : forms)
    zwlr_data_control_source_v1_offer(source.get(), std::string(form.target).c_str());
  zwlr_data_control_device_v1_set_selection(device.get(), source.get());
  isOwner = true;
  return wl_display_roundtrip(display.get()) >= 0 && isOwner;
}

}  // namespace clipboardkeeper
