#pragma once

#include "platform/updater/Updater.h"

#include <memory>

namespace sorrel {

/// The updater of this build, which tells the user what it finds in an alert. Null where the program's
/// information file names no feed.
[[nodiscard]] std::unique_ptr<platform::Updater> makeProgramUpdater();

}  // namespace sorrel
