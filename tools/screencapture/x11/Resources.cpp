#include "tools/screencapture/x11/Resources.h"

#include <algorithm>
#include <charconv>

namespace screencapture {

double scaleFromResources(std::string_view resources) {
  constexpr std::string_view key = "Xft.dpi:";
  constexpr double dotsPerInchAtScaleOne = 96;
  double dotsPerInch = dotsPerInchAtScaleOne;
  for (std::size_t start = 0; start < resources.size();) {
    const std::size_t end = std::min(resources.find('\n', start), resources.size());
    std::string_view line = resources.substr(start, end - start);
    start = end + 1;
    if (!line.starts_with(key))
      continue;
    line.remove_prefix(key.size());
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    double value = 0;
    if (std::from_chars(line.data(), line.data() + line.size(), value).ec == std::errc() && value > 0)
      dotsPerInch = value;
  }
  return dotsPerInch / dotsPerInchAtScaleOne;
}

}  // namespace screencapture
