#pragma once

#include "platform/updater/UpdateProblem.h"
#include "tools/updatefetcher/Arguments.h"

#include <optional>

namespace updatefetcher {

/// Has the package of these arguments in its file, complete and verified; without a question to the network
/// where it is there already.
///
/// What has come so far stands in a file beside it, whose name has ".part" at its end. That stays when the
/// connection breaks, for another run to go on with, and goes with every other failure. What can't be
/// resumed, or turns out not to fit together, is fetched from its beginning.
[[nodiscard]] std::optional<platform::UpdateProblem> fetchPackage(const Arguments& arguments);

}  // namespace updatefetcher
