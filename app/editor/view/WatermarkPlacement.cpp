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

QSizeF textFieldSize(const QSizeF& text) {
  return {std::ceil(text.width()) + 6, std::ceil(text.height()) + 2};
}

QSizeF textWatermarkDisplaySize(const EditorModel& model) {
  return textFieldSize(model.textRect().size());
}

}  // namespace sorrel
