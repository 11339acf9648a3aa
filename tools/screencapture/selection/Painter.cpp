#include "tools/screencapture/selection/Painter.h"

namespace screencapture {

namespace {

constexpr Paint boxGround{0.10, 0.11, 0.10, 0.94};
constexpr Paint boxEdge{1, 1, 1, 0.30};
constexpr double boxRadius = 7;  // at the scale 1

}  // namespace

void Painter::blend(Point at, const Paint& paint, double coverage) {
  std::uint32_t& pixel = pixelAt(at);
  const double alpha = paint.alpha * coverage;
  const double channels[] = {1, paint.red, paint.green, paint.blue};
  std::uint32_t result = 0;
  for (int i = 0; i < 4; ++i) {
    const int shift = 24 - 8 * i;
    const double below = (pixel >> shift) & 0xff;
    result |= static_cast<std::uint32_t>(std::lround(channels[i] * alpha * 255 + below * (1 - alpha)))
              << shift;
  }
  pixel = result;
}

void Painter::fill(const Rectangle& area, const Paint& paint) {
  fill(area, paint, [](Vector) { return -1.0; });
}

void Painter::fill(const Coverage& mask, Point at, const Paint& paint) {
  for (int y = 0; y < mask.size.height; ++y) {
    for (int x = 0; x < mask.size.width; ++x) {
      if (const int covered = mask.values[mask.size.indexOf({x, y})]; covered > 0)
        blend({at.x + x, at.y + y}, paint, covered / 255.0);
    }
  }
}

void Painter::fillBox(const Rectangle& area, const Metrics& metrics) {
  const Vector half{area.width / 2.0, area.height / 2.0};
  const RoundedBox box{{area.x + half.x, area.y + half.y}, half, boxRadius * metrics.scale};
  fill(area, boxEdge, box);
  fill(area, boxGround, grown(box, -metrics.line));
}

void Painter::fade(int opacity) {
  for (std::uint32_t& pixel : artwork.pixels) {
    std::uint32_t faded = 0;
    for (int shift = 0; shift < 32; shift += 8)
      faded |= ((pixel >> shift & 0xff) * static_cast<std::uint32_t>(opacity) / 255) << shift;
    pixel = faded;
  }
}

}  // namespace screencapture
