#include "app/editor/model/PenStroke.h"

#include "app/editor/model/EditorModel.h"
#include "platform/imaging/drawing/DrawingSurface.h"

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

void EditorModel::begin(const QPointF& point) {
  current = PenStroke{.points = {point}, .colorHex = colorHex, .width = lineWidth};
}

void EditorModel::commit() {
  if (current.get() && current.get()->points.size() >= 2) {
    strokes.change([this](auto& committed) { committed.append(*current.get()); });
    undoStack.change([](auto& entries) { entries.append(EditAction::pen); });
  }
  current = std::nullopt;
}

void EditorModel::drawStrokes(platform::DrawingSurface& surface, double scale) const {
  for (const PenStroke& stroke : strokes.get())
    surface.draw(platform::RoundLine{inOutput(stroke.points, scale), scale * stroke.width},
                 colorFromHex(stroke.colorHex));
}

}  // namespace sorrel
