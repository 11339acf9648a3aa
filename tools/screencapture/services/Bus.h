#pragma once

#include <chrono>
#include <memory>
#include <systemd/sd-bus.h>

namespace screencapture {

struct BusEnd {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, BusEnd>;

struct MessageEnd {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageEnd>;

/// Why a call has failed; empty before.
class BusError {
 public:
  BusError() = default;
  ~BusError() { sd_bus_error_free(&error); }
  BusError(const BusError&) = delete;
  BusError& operator=(const BusError&) = delete;

  [[nodiscard]] sd_bus_error* get() { return &error; }
  [[nodiscard]] const char* message() const { return error.message ? error.message : "no answer"; }
  [[nodiscard]] bool is(const char* name) const { return sd_bus_error_has_name(&error, name) != 0; }

 private:
  sd_bus_error error = {};
};

/// The user's bus; null where there is none.
[[nodiscard]] Bus openBus();

[[nodiscard]] constexpr std::uint64_t microseconds(std::chrono::milliseconds time) {
  return static_cast<std::uint64_t>(std::chrono::microseconds(time).count());
}

/// Calls `use(key)` for each entry of the dictionary of strings to variants that comes next in a message; it
/// reads the variant and tells whether it did.
template <typename Use>
void readEntries(sd_bus_message* message, Use use) {
  if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0)
    return;
  while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
    const char* key = nullptr;
    if (sd_bus_message_read(message, "s", &key) <= 0)
      return;
    if (!use(key) && sd_bus_message_skip(message, "v") < 0)
      return;
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
}

/// Whether the variant that comes next is of this type.
[[nodiscard]] bool holds(sd_bus_message* message, const char* type);

}  // namespace screencapture
