#pragma once

#include "platform/system/ClipboardForms.h"
#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandGlobals.h"
#include "tools/clipboardkeeper/ClipboardOwner.h"

#include <chrono>
#include <poll.h>
#include <vector>

namespace clipboardkeeper {

/// What the kinds of Wayland clipboards have in common: one connection, and for every reader a pipe and a
/// pace of its own.
class WaylandOwner : public ClipboardOwner {
 public:
  void serve() override;

 protected:
  /// The session's compositor; null where there is none.
  [[nodiscard]] static wl_display* connect();
  /// The bytes of the forms must outlive this.
  WaylandOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents);

  /// Another program wants the contents in that form, and reads them from the pipe.
  void startTransfer(std::string_view target, platform::Descriptor pipe);

  const platform::WaylandObject<wl_display> display;
  const platform::WaylandGlobals globals;
  const platform::WaylandObject<wl_seat> seat;
  const std::vector<platform::ClipboardForm> forms;
  bool isOwner = false;

 private:
  using Clock = std::chrono::steady_clock;

  /// A form on its way to one reader.
  struct Transfer {
    platform::Descriptor pipe;
    std::span<const std::uint8_t> rest;
    Clock::time_point lastSign;
  };

  /// Gives the reader what its pipe takes now; false when that was the last of it, or the reader is gone.
  [[nodiscard]] static bool goOn(Transfer& transfer);
  /// Waits until the compositor or a reader has something for us, and reads what the former has.
  [[nodiscard]] bool waitForWork(std::vector<pollfd>& watched);

  std::vector<Transfer> transfers;
};

}  // namespace clipboardkeeper
