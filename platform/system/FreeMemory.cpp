#include "platform/system/FreeMemory.h"

#include <malloc.h>

namespace platform {

void shareOneHeap() {
  mallopt(M_ARENA_MAX, 1);
}

void giveBackFreeMemory() {
  malloc_trim(0);
}

}  // namespace platform
