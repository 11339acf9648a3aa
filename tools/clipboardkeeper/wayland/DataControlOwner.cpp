#include "tools/clipboardkeeper/wayland/DataControlOwner.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <wlr-data-control-unstable-v1.h>

namespace clipboardkeeper {

namespace {

constexpr std::chrono::seconds patience{20};  // with a reader that stopped reading
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
  // Not even the name by which sessions are called as a rule, where this one has none: it would be another of
  // the same user's.
  wl_display* const display = std::getenv("WAYLAND_DISPLAY") ? wl_display_connect(nullptr) : nullptr;
  if (!display)
    return nullptr;
  std::unique_ptr<DataControlOwner> owner(new DataControlOwner(display, contents));
  return owner->own() ? std::move(owner) : nullptr;
}

DataControlOwner::DataControlOwner(wl_display* connected,
                                   const std::vector<platform::ClipboardForm>& contents)
    : display(connected, {wl_display_disconnect}),
      globals(connected),
      seat(globals.bind<wl_seat>(wl_seat_interface, 1), {wl_seat_destroy}),
      manager(
          globals.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, newestManager),
          {zwlr_data_control_manager_v1_destroy}),
      device(nullptr, {zwlr_data_control_device_v1_destroy}),
      source(nullptr, {zwlr_data_control_source_v1_destroy}),
      forms(contents) {
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

void DataControlOwner::serve() {
  signal(SIGPIPE, SIG_IGN);  // a reader that ends early is told by the write
  std::vector<pollfd> watched;
  while (isOwner || !transfers.empty()) {
    if (!waitForWork(watched))
      return;
    // Transfers that have begun since stand behind those that were watched.
    for (std::size_t i = watched.size(); i-- > 1;) {
      Transfer& transfer = transfers[i - 1];
      const bool isDone = watched[i].revents != 0 && !goOn(transfer);
      if (isDone || Clock::now() - transfer.lastSign > patience)
        transfers.erase(transfers.begin() + static_cast<std::ptrdiff_t>(i) - 1);
    }
  }
}

bool DataControlOwner::waitForWork(std::vector<pollfd>& watched) {
  while (wl_display_prepare_read(display.get()) != 0)
    wl_display_dispatch_pending(display.get());
  wl_display_flush(display.get());
  watched.assign({{wl_display_get_fd(display.get()), POLLIN, 0}});
  for (const Transfer& transfer : transfers)
    watched.push_back({transfer.pipe.get(), POLLOUT, 0});
  const auto limit = static_cast<int>(std::chrono::milliseconds(patience).count());
  (void)poll(watched.data(), watched.size(), transfers.empty() ? -1 : limit);
  if (watched.front().revents == 0) {
    wl_display_cancel_read(display.get());
    return true;
  }
  return wl_display_read_events(display.get()) >= 0 && wl_display_dispatch_pending(display.get()) >= 0;
}

void DataControlOwner::startTransfer(std::string_view target, platform::Descriptor pipe) {
  const auto form = std::ranges::find(forms, target, &platform::ClipboardForm::target);
  if (form == forms.end() || fcntl(pipe.get(), F_SETFL, O_NONBLOCK) != 0)
    return;
  transfers.push_back({std::move(pipe), form->bytes, Clock::now()});
}

bool DataControlOwner::goOn(Transfer& transfer) {
  while (!transfer.rest.empty()) {
    const ssize_t written = write(transfer.pipe.get(), transfer.rest.data(), transfer.rest.size());
    if (written < 0)
      return errno == EAGAIN || errno == EINTR;
    transfer.rest = transfer.rest.subspan(static_cast<std::size_t>(written));
    transfer.lastSign = Clock::now();
  }
  return false;
}

}  // namespace clipboardkeeper
