#pragma once

#include "tools/clipboardkeeper/wayland/WaylandOwner.h"

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_source_v1;

namespace clipboardkeeper {

/// Offers contents on a Wayland clipboard by data control, which takes neither a window nor the keyboard. The
/// primary selection is left alone.
class DataControlOwner : public WaylandOwner {
 public:
  /// Takes the clipboard; null where there is no compositor, or it offers no data control, or refuses. The
  /// bytes of the forms must outlive this.
  [[nodiscard]] static std::unique_ptr<ClipboardOwner> take(
      const std::vector<platform::ClipboardForm>& contents);

 private:
  DataControlOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents);
  [[nodiscard]] bool own();

  platform::WaylandObject<zwlr_data_control_manager_v1> manager;
  platform::WaylandObject<zwlr_data_control_device_v1> device;
  platform::WaylandObject<zwlr_data_control_source_v1> source;
};

}  // namespace clipboardkeeper
