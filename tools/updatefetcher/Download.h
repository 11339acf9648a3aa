#pragma once

#include "platform/updater/UpdateProblem.h"
#include "tools/updatefetcher/Arguments.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace updatefetcher {

/// What is wanted of a server, and who gets it.
struct Download {
  std::string address;
  Limits limits{};
  std::uint64_t from = 0;  // the first byte that is wanted
  std::uint64_t most = 0;  // bytes of the answer
  /// Takes the bytes as they come; false ends the download.
  std::function<bool(std::span<const std::uint8_t> bytes)> take;
};

/// Fetches by HTTP. Follows a few redirections, to trustworthy addresses alone; sends nothing that tells who
/// asks. Nothing where all came that the server meant to send; UpdateProblem::Refused also where it can't
/// send a part; UpdateProblem::Unwritable where `take` ended it. Says the reason on standard error.
[[nodiscard]] std::optional<platform::UpdateProblem> fetch(const Download& download);

}  // namespace updatefetcher
