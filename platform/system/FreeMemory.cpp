#include "platform/system/FreeMemory.h"

#include <malloc.h>

namespace platform {

void giveBackFreeMemory() {
  malloc_trim(0);
}

}  // namespace platform
