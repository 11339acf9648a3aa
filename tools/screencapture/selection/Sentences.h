#pragma once

#include "tools/screencapture/selection/TextMasks.h"

namespace screencapture {

/// What the tool says by other programs, which draw letters: of the string tables, as they were when the
/// program was built.
enum class Sentence { RefusalTitle, RefusalAdvice };

struct BakedSentence {
  Sentence sentence;
  Language language;
  const char* text;  // UTF-8
};
extern const std::span<const BakedSentence> bakedSentences;

[[nodiscard]] inline const char* sentence(Sentence wanted, Language language) {
  for (const BakedSentence& baked : bakedSentences)
    if (baked.sentence == wanted && baked.language == language)
      return baked.text;
  return "";
}

}  // namespace screencapture
