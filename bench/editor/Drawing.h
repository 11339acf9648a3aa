#pragma once

#include "app/editor/model/EditorModel.h"

namespace bench {

/// 20 strokes of blur across the picture, every second one a mosaic.
void addBlur(sorrel::EditorModel& model);
/// A wave of 200 points; each number has its place.
void addStroke(sorrel::EditorModel& model, int number);

}  // namespace bench
