#include "platform/imaging/codecs/encoding/Palette.h"

#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/encoding/ColorBoxes.h"

#include <QImage>

#include <algorithm>
#include <cstring>
#include <limits>
#include <unordered_set>

namespace platform::encoding {
namespace {

/// Calls `visit` with the colour of each pixel that isn't clear, until it returns false.
template <typename Visit>
void forEachColor(const QImage& picture, Visit visit) {
  const auto width = static_cast<std::size_t>(picture.width());
  std::vector<std::uint8_t> row(4 * width);
  for (int y = 0; y < picture.height(); ++y) {
    std::memcpy(row.data(), picture.constScanLine(y), row.size());
    unpremultiply(row.data(), width);
    for (std::size_t i = 0; i < row.size(); i += 4)
      if (!isClear(&row[i]) && !visit(Color{row[i], row[i + 1], row[i + 2]}))
        return;
  }
}

/// All colours, or more than `most` if there are more.
std::vector<Color> distinctColors(const QImage& picture, std::size_t most) {
  std::vector<Color> colors;
  std::unordered_set<std::uint32_t> seen;
  Color last;
  forEachColor(picture, [&](Color color) {
    if (!colors.empty() && color == last)
      return true;
    last = color;
    if (seen.insert(color.red | color.green * 0x100U | color.blue * 0x10000U).second)
      colors.push_back(color);
    return colors.size() <= most;
  });
  return colors;
}

/// Most of a box may be one colour: that of a window's background, say. It is then kept instead of the mean,
/// so that what is flat stays flat.
void keepPrevailingColors(const QImage& picture, const ColorBoxes& boxes, std::vector<Color>& palette) {
  struct Vote {
    Color color;
    std::int64_t lead = 0;   // over all others, as far as it can be known from a single pass
    std::int64_t count = 0;  // in the second pass: the box's pixels of that colour
    std::int64_t total = 0;
  };
  std::vector<Vote> votes(palette.size());
  forEachColor(picture, [&](Color color) {
    Vote& vote = votes[boxes.boxOf(color)];
    if (vote.lead == 0)
      vote.color = color;
    vote.lead += vote.color == color ? 1 : -1;
    return true;
  });
  forEachColor(picture, [&](Color color) {
    Vote& vote = votes[boxes.boxOf(color)];
    vote.count += vote.color == color ? 1 : 0;
    ++vote.total;
    return true;
  });
  for (std::size_t i = 0; i < palette.size(); ++i)
    if (2 * votes[i].count > votes[i].total)
      palette[i] = votes[i].color;
}

int square(int number) {
  return number * number;
}

}  // namespace

std::vector<Color> choosePalette(const QImage& picture, std::size_t most) {
  std::vector<Color> exact = distinctColors(picture, most);
  if (exact.size() <= most)
    return exact;
  ColorBoxes boxes;
  forEachColor(picture, [&](Color color) {
    boxes.add(color);
    return true;
  });
  std::vector<Color> palette = boxes.divide(most);
  keepPrevailingColors(picture, boxes, palette);
  return palette;
}

std::uint8_t NearestColor::operator()(Color color) {
  constexpr int perAxis = 8 - cellBits;
  const auto level = [](std::uint8_t channel) { return static_cast<std::size_t>(channel >> cellBits); };
  Candidates& candidates =
      cells[(level(color.red) << perAxis | level(color.green)) << perAxis | level(color.blue)];
  if (candidates.empty())
    candidates = candidatesFor(color);
  std::uint8_t best = 0;
  int least = std::numeric_limits<int>::max();
  for (const std::uint8_t candidate : candidates) {
    const Color& entry = colors[candidate];
    const int distance =
        square(entry.red - color.red) + square(entry.green - color.green) + square(entry.blue - color.blue);
    if (distance < least) {
      least = distance;
      best = candidate;
    }
  }
  return best;
}

/// The entries that are the nearest for some colour in the cell of `color`: an entry that is farther from the
/// cell's nearest point than another is from its farthest point can't be.
NearestColor::Candidates NearestColor::candidatesFor(Color color) const {
  constexpr int cellSide = 1 << cellBits;
  struct Range {
    int nearest = 0, farthest = 0;
  };
  const auto add = [](Range& range, std::uint8_t entry, std::uint8_t channel) {
    const int low = channel & ~(cellSide - 1);
    const int high = low + cellSide - 1;
    range.nearest += square(std::max({low - entry, entry - high, 0}));
    range.farthest += square(std::max(entry - low, high - entry));
  };
  std::vector<Range> ranges;
  int reach = std::numeric_limits<int>::max();
  for (const Color& entry : colors) {
    Range range;
    add(range, entry.red, color.red);
    add(range, entry.green, color.green);
    add(range, entry.blue, color.blue);
    reach = std::min(reach, range.farthest);
    ranges.push_back(range);
  }
  Candidates candidates;
  for (std::size_t i = 0; i < ranges.size(); ++i)
    if (ranges[i].nearest <= reach)
      candidates.push_back(static_cast<std::uint8_t>(i));
  return candidates;
}

}  // namespace platform::encoding
