#include "platform/input/KeyCodes.h"

#include <linux/input-event-codes.h>

namespace platform {

std::optional<int> evdevCode(qint64 keyCode) {
  switch (keyCode) {
#define PLATFORM_TO_EVDEV(name, virtualCode, evdev) \
  case virtualCode:                                 \
    return evdev;
    PLATFORM_NAMED_KEYS(PLATFORM_TO_EVDEV)
#undef PLATFORM_TO_EVDEV
    default:
      return std::nullopt;
  }
}

std::optional<int> keyCode(int evdevCode) {
  switch (evdevCode) {
#define PLATFORM_FROM_EVDEV(name, virtualCode, evdev) \
  case evdev:                                         \
    return virtualCode;
    PLATFORM_NAMED_KEYS(PLATFORM_FROM_EVDEV)
#undef PLATFORM_FROM_EVDEV
    default:
      return std::nullopt;
  }
}

}  // namespace platform
