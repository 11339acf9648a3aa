#include "app/editor/model/PenStroke.h"

#include "app/editor/model/EditorModel.h"
#include "platform/imaging/DrawingSurface.h"

namespace sorrel {

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
                 QColor::fromRgb(0xff000000 | stroke.colorHex));
}

}  // namespace sorrel
