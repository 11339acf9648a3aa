#include "app/editor/view/WatermarkPlacement.h"

#include "app/editor/model/EditorModel.h"

#include <algorithm>
#include <cmath>

namespace sorrel {
namespace {

/// Line breaks have a height, and so a place.
bool isBlankLine(const QString& text) {
  return std::ranges::all_of(
      text, [](QChar one) { return one == u'\t' || one.category() == QChar::Separator_Space; });
}

}  // namespace

void beginTextEditing(EditorModel& model) {
  if (isBlankLine(model.textWM->text))
    model.textWM.change(
        [&](TextWatermark& text) { text.center = TextWatermark::initial(model.displaySize).center; });
  model.tool = EditorModel::Tool::watermark;
  model.isEditingText = true;
}

/// That of the field in which it is edited, without the field's padding.
QSizeF textWatermarkDisplaySize(const EditorModel& model) {
  const QSizeF block = model.textRect().size();
  return {std::ceil(block.width()) + 6, std::ceil(block.height()) + 2};
}

}  // namespace sorrel
