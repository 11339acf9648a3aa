#include "tools/screencapture/services/Bus.h"

#include <cstring>

namespace screencapture {

Bus openBus() {
  sd_bus* bus = nullptr;
  return sd_bus_open_user(&bus) < 0 ? nullptr : Bus(bus);
}

bool holds(sd_bus_message* message, const char* type) {
  char container = 0;
  const char* contents = nullptr;
  return sd_bus_message_peek_type(message, &container, &contents) > 0 && container == SD_BUS_TYPE_VARIANT &&
         std::strcmp(contents, type) == 0;
}

}  // namespace screencapture
