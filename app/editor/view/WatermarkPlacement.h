#pragma once

#include <QSizeF>

namespace sorrel {

class EditorModel;

/// Lets the text be edited where it stands on the picture; one that shows nothing begins low in the middle.
void beginTextEditing(EditorModel& model);

/// How much room the text takes, in display space, for what is to keep clear of it.
[[nodiscard]] QSizeF textWatermarkDisplaySize(const EditorModel& model);

}  // namespace sorrel
