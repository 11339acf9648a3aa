#pragma once

namespace sorrel {

/// Tells assistive technology what the toolkit can't know of the history's own widgets: that the grid is a
/// list of named pictures, and the toast a message. Does nothing from the second call on.
void installHistoryAccessibility();

}  // namespace sorrel
