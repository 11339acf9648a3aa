#include "app/editor/model/PenStroke.h"

#include <algorithm>
#include <cmath>

namespace sorrel {

QColor colorFromHex(quint32 colorHex) {
  return QColor::fromRgb(0xff000000 | colorHex);
}

std::optional<quint32> hexRGB(const QColor& color) {
  const QColor sRgb = color.toRgb();
  if (!sRgb.isValid())
    return std::nullopt;
  const auto channel = [](float component) {
    return quint32(std::lround(std::clamp(component, 0.0F, 1.0F) * 255.0F));
  };
  return channel(sRgb.redF()) << 16 | channel(sRgb.greenF()) << 8 | channel(sRgb.blueF());
}

}  // namespace sorrel
