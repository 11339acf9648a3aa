#pragma once

#include "app/editor/model/EditorModel.h"

#include <span>

class QWidget;

namespace sorrel {

class PopoverTiming;

/// What the options of a tool work with.
struct SectionContext {
  EditorModel& model;
  PopoverTiming& timing;
};

/// What the editor's frame has to know of a tool.
struct EditorTool {
  EditorModel::Tool tool;
  const char* symbol;   // null where words stand in its place
  const char* helpKey;  // of its title
  /// Makes its section of the options popover, as wide as its parent lets it be; null if it has no options.
  QWidget* (*makeSection)(const SectionContext& context, QWidget* parent);
};

/// All tools in the order of the rail.
[[nodiscard]] std::span<const EditorTool> editorTools();
/// The place of a tool in that order.
[[nodiscard]] int indexOf(EditorModel::Tool tool);

}  // namespace sorrel
