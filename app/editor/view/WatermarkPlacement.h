#pragma once

#include <QSizeF>

namespace sorrel {

class EditorModel;

/// Lets the text be edited where it stands on the picture; one that shows nothing begins low in the middle.
void beginTextEditing(EditorModel& model);

/// Of the field in which a text of that size is edited, without the field's padding; in display space.
[[nodiscard]] QSizeF textFieldSize(const QSizeF& text);

/// How much room the text takes, in display space, for what is to keep clear of it.
[[nodiscard]] QSizeF textWatermarkDisplaySize(const EditorModel& model);

}  // namespace sorrel
