#pragma once

#include "tools/screencapture/selection/Artwork.h"
#include "tools/screencapture/selection/TextMasks.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

namespace screencapture {

/// The first language that the user's environment names and the program speaks, English if there is none.
/// `variable` gives an environment variable's value, empty where it isn't set.
[[nodiscard]] Language languageOf(const std::function<std::string_view(const char*)>& variable);
/// The same of this process's own environment.
[[nodiscard]] Language languageOfUser();

enum class WindowChoice { Offered, Missing };

struct HintText {
  Language language = Language::English;
  WindowChoice windows = WindowChoice::Offered;
};

/// What Space (where windows can be chosen) and Escape do, near the lower edge of one monitor: it is there
/// from the start on and fades after some seconds.
class Hint {
 public:
  using Duration = std::chrono::milliseconds;

  Hint(const HintText& text, const Rectangle& monitor, const Metrics& metrics);

  /// What to show so long after the start; nothing once it has faded.
  [[nodiscard]] std::optional<ShownHint> at(Duration sinceStart) const;
  /// How long from then on until that changes; nothing once it doesn't any more.
  [[nodiscard]] static std::optional<Duration> nextChange(Duration sinceStart);

 private:
  Rectangle place;
};

[[nodiscard]] Artwork drawHint(const HintText& text, const Metrics& metrics, int opacity);

}  // namespace screencapture
