#include "app/editor/view/PenTool.h"

#include "app/editor/model/EditorModel.h"

namespace sorrel {

void PenTool::pressed(const QPointF& place) {
  model.begin(place);
}

void PenTool::dragged(const QPointF& place) {
  if (!model.current.get())
    return model.begin(place);
  model.current.change([&](auto& stroke) { stroke->points.append(place); });
}

void PenTool::released() {
  model.commit();
}

}  // namespace sorrel
