#include "tools/screencapture/Arguments.h"

#include <string_view>

namespace screencapture {

std::optional<Arguments> parseArguments(std::span<const char* const> words) {
  if (words.size() != 2 || std::string_view(words[0]) != "-i")
    return std::nullopt;
  const std::string_view target = words[1];
  if (target == "-c")
    return Arguments{Destination::Clipboard, {}};
  if (target.empty() || target.front() == '-')
    return std::nullopt;
  return Arguments{Destination::File, std::string(target)};
}

}  // namespace screencapture
