#pragma once

#include "platform/imaging/png/Effort.h"

#include <functional>

namespace platform {

/// Deals `count` rows out to the cores as one band of neighbours each, and returns when all are done. No band
/// has fewer than `smallest` rows, so that little work stays on the calling core. `work` is told the first
/// row of a band and the one after its last. What a band throws is thrown here.
void forEachBand(int count, int smallest, Cores cores, const std::function<void(int first, int end)>& work);

}  // namespace platform
