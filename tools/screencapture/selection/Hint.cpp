#include "tools/screencapture/selection/Hint.h"

#include <algorithm>
#include <cstdlib>

namespace screencapture {

namespace {

using Duration = Hint::Duration;

constexpr Duration stay{3500};
constexpr Duration fade{500};
constexpr Duration frame{25};
constexpr double distanceFromEdge = 56;  // of the monitor, at the scale 1

Text textOf(const HintText& text) {
  const bool isKorean = text.language == Language::Korean;
  if (text.windows == WindowChoice::Missing)
    return isKorean ? Text::KoreanEscapeHint : Text::EnglishEscapeHint;
  return isKorean ? Text::KoreanHint : Text::EnglishHint;
}

}  // namespace

Language languageOf(const std::function<std::string_view(const char*)>& variable) {
  // As programs that look their texts up do: a list with colons, then the locale's own variables.
  for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
    std::string_view names = variable(name);
    while (!names.empty()) {
      const std::string_view first = names.substr(0, names.find(':'));
      names.remove_prefix(std::min(first.size() + 1, names.size()));
      const std::string_view language = first.substr(0, first.find_first_of("_-.@"));
      if (language == "ko")
        return Language::Korean;
      if (language == "en")
        return Language::English;
    }
  }
  return Language::English;
}

Language languageOfUser() {
  return languageOf([](const char* name) -> std::string_view {
    const char* const value = std::getenv(name);
    return value ? value : "";
  });
}

Hint::Hint(const HintText& text, const Rectangle& monitor, const Metrics& metrics) {
  const Size size = boxSize(coverageOf(textOf(text), metrics.scale).size, metrics);
  place = {monitor.x + (monitor.width - size.width) / 2,
           monitor.bottom() - metrics.pixels(distanceFromEdge) - size.height, size.width, size.height};
}

std::optional<ShownHint> Hint::at(Duration sinceStart) const {
  if (sinceStart >= stay + fade)
    return std::nullopt;
  const auto left = std::min(stay + fade - sinceStart, fade);
  return ShownHint{place, static_cast<int>(left * 255 / fade)};
}

std::optional<Duration> Hint::nextChange(Duration sinceStart) {
  if (sinceStart >= stay + fade)
    return std::nullopt;
  return sinceStart < stay ? stay - sinceStart : frame;
}

Artwork drawHint(const HintText& text, const Metrics& metrics, int opacity) {
  return drawBox(coverageOf(textOf(text), metrics.scale), metrics, opacity);
}

}  // namespace screencapture
