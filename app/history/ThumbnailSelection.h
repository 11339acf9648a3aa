#pragma once

#include "app/history/ListChange.h"
#include "app/history/ThumbnailLayout.h"

#include <algorithm>
#include <optional>

namespace sorrel {

/// Which thumbnail is selected, if any, and where the keyboard goes on from.
class ThumbnailSelection {
 public:
  [[nodiscard]] std::optional<int> row() const { return isSelected ? std::optional(cursor) : std::nullopt; }
  /// The selected row; if there is none, the one that the next step of the keyboard selects.
  [[nodiscard]] int keyboardRow() const { return cursor; }

  void select(int row) {
    cursor = row;
    isSelected = true;
  }
  /// Selects what a key leads to, which must be in a list that isn't empty.
  void move(CursorMove move, const ThumbnailLayout& layout, qreal viewHeight) {
    const bool isFromHere = isSelected || move == CursorMove::First || move == CursorMove::Last;
    select(isFromHere ? layout.moved(cursor, move, viewHeight) : cursor);
  }
  /// Stays with its screenshot, and goes with it; the keyboard then stays where that was.
  void follow(const ListChange& change) {
    const bool hasGone = cursor >= static_cast<int>(change.rows.size()) ||
                         change.rows[static_cast<std::size_t>(cursor)] == ListChange::gone;
    isSelected = isSelected && !hasGone;
    cursor = std::max(change.rowNear(cursor), 0);
  }

 private:
  int cursor = 0;
  bool isSelected = false;
};

}  // namespace sorrel
