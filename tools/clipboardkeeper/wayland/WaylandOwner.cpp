#include "tools/clipboardkeeper/wayland/WaylandOwner.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace clipboardkeeper {

namespace {

constexpr std::chrono::seconds readerPatience{20};  // with a reader that stopped reading

}  // namespace

wl_display* WaylandOwner::connect() {
  // Not even the name by which sessions are called as a rule, where this one has none: it would be another of
  // the same user's.
  return std::getenv("WAYLAND_DISPLAY") ? wl_display_connect(nullptr) : nullptr;
}

WaylandOwner::WaylandOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents)
    : display(connected, {wl_display_disconnect}),
      globals(connected),
      seat(globals.bind<wl_seat>(wl_seat_interface, 1), {wl_seat_destroy}),
      forms(contents) {
}

void WaylandOwner::serve() {
  signal(SIGPIPE, SIG_IGN);  // a reader that ends early is told by the write
  std::vector<pollfd> watched;
  while (isOwner || !transfers.empty()) {
    if (!waitForWork(watched))
      return;
    // Transfers that have begun since stand behind those that were watched.
    for (std::size_t i = watched.size(); i-- > 1;) {
      Transfer& transfer = transfers[i - 1];
      const bool isDone = watched[i].revents != 0 && !goOn(transfer);
      if (isDone || Clock::now() - transfer.lastSign > readerPatience)
        transfers.erase(transfers.begin() + static_cast<std::ptrdiff_t>(i) - 1);
    }
  }
}

bool WaylandOwner::waitForWork(std::vector<pollfd>& watched) {
  while (wl_display_prepare_read(display.get()) != 0)
    wl_display_dispatch_pending(display.get());
  wl_display_flush(display.get());
  watched.assign({{wl_display_get_fd(display.get()), POLLIN, 0}});
  for (const Transfer& transfer : transfers)
    watched.push_back({transfer.pipe.get(), POLLOUT, 0});
  const auto limit = static_cast<int>(std::chrono::milliseconds(readerPatience).count());
  (void)poll(watched.data(), watched.size(), transfers.empty() ? -1 : limit);
  if (watched.front().revents == 0) {
    wl_display_cancel_read(display.get());
    return true;
  }
  return wl_display_read_events(display.get()) >= 0 && wl_display_dispatch_pending(display.get()) >= 0;
}

void WaylandOwner::startTransfer(std::string_view target, platform::Descriptor pipe) {
  const auto form = std::ranges::find(forms, target, &platform::ClipboardForm::target);
  if (form == forms.end() || fcntl(pipe.get(), F_SETFL, O_NONBLOCK) != 0)
    return;
  transfers.push_back({std::move(pipe), form->bytes, Clock::now()});
}

bool WaylandOwner::goOn(Transfer& transfer) {
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
