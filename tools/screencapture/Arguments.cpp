#include "tools/screencapture/Arguments.h"

#include <string_view>

namespace screencapture {

std::optional<Arguments> parseArguments(std::span<const char* const> words) {
  if (words.size() == 1 && std::string_view(words[0]) == "--pick-color")
    return Arguments{Wish::Color, {}};
  if (words.size() != 2 || std::string_view(words[0]) != "-i")
    return std::nullopt;
  const std::string_view target = words[1];
  if (target == "-c")
    return Arguments{Wish::PictureOnClipboard, {}};
  if (target.empty() || target.front() == '-')
    return std::nullopt;
  return Arguments{Wish::PictureInFile, std::string(target)};
}

std::optional<Arguments> parseCommandLine(int count, const char* const* words) {
  const std::span all(words, static_cast<std::size_t>(count));
  return parseArguments(all.empty() ? all : all.subspan(1));
}

}  // namespace screencapture
