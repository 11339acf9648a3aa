#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/Arguments.h"

#include <cstdint>
#include <optional>
#include <string>

namespace screencapture {

enum Status { Taken = 0, NothingTaken = 1 };

/// The path of the program beside this one, by the same rule in the build tree and where it is installed.
[[nodiscard]] std::string besideThis(const char* name);

/// Brings what was taken to where the arguments say; what goes wrong is said on standard error. Without a
/// picture there is nothing to do, the reason has been said.
[[nodiscard]] Status deliver(const std::optional<platform::PngFile>& png, const Arguments& arguments);
/// 0xRRGGBB, to standard output.
[[nodiscard]] Status deliver(std::optional<std::uint32_t> color);

}  // namespace screencapture
