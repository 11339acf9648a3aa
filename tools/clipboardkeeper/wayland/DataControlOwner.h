#pragma once

#include "platform/system/ClipboardForms.h"
#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandGlobals.h"
#include "tools/clipboardkeeper/ClipboardOwner.h"

#include <chrono>
#include <poll.h>
#include <vector>

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_source_v1;

namespace clipboardkeeper {

/// Offers contents on a Wayland clipboard by data control, which takes neither a window nor the keyboard. The
/// primary selection is left alone. Every reader has its own pipe and its own pace.
class DataControlOwner : public ClipboardOwner {
 public:
  /// Takes the clipboard; null where there is no compositor, or it offers no data control, or refuses. The
  /// bytes of the forms must outlive this.
  [[nodiscard]] static std::unique_ptr<ClipboardOwner> take(
      const std::vector<platform::ClipboardForm>& contents);

  void serve() override;

 private:
  using Clock = std::chrono::steady_clock;

  /// A form on its way to one reader.
  struct Transfer {
    platform::Descriptor pipe;
    std::span<const std::uint8_t> rest;
    Clock::time_point lastSign;
  };

  DataControlOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents);
  [[nodiscard]] bool own();
  void startTransfer(std::string_view target, platform::Descriptor pipe);
  /// Gives the reader what its pipe takes now; false when that was the last of it, or the reader is gone.
  [[nodiscard]] static bool goOn(Transfer& transfer);
  /// Waits until the compositor or a reader has something for us, and reads what the former has.
  [[nodiscard]] bool waitForWork(std::vector<pollfd>& watched);

  platform::WaylandObject<wl_display> display;
  platform::WaylandGlobals globals;
  platform::WaylandObject<wl_seat> seat;
  platform::WaylandObject<zwlr_data_control_manager_v1> manager;
  platform::WaylandObject<zwlr_data_control_device_v1> device;
  platform::WaylandObject<zwlr_data_control_source_v1> source;
  const std::vector<platform::ClipboardForm> forms;
  bool isOwner = false;
  std::vector<Transfer> transfers;
};

}  // namespace clipboardkeeper
