#pragma once

#include <span>

namespace sorrel {

struct ListChange;
struct Screenshot;
class ThumbnailGrid;

/// Tells assistive technology what the toolkit can't know of the history's own widgets: that the grid is a
/// list of named pictures, and the toast a message. Does nothing from the second call on.
void installHistoryAccessibility();

/// Tells it that another list has taken the place of `before`, and how they differ.
void tellOfChange(ThumbnailGrid& grid, std::span<const Screenshot> before, const ListChange& change);
/// Tells it which thumbnail has the keyboard now.
void tellOfSelection(ThumbnailGrid& grid);

}  // namespace sorrel
