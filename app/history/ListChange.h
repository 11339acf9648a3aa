#pragma once

#include <span>
#include <vector>

namespace sorrel {

struct Screenshot;

/// What becomes of the rows of one list of screenshots when another takes its place. A screenshot is the same
/// as long as its path is.
struct ListChange {
  static constexpr int gone = -1;

  /// For each row of the old list its row in the new one, or `gone`.
  std::vector<int> rows;
  /// The rows of the new list whose screenshots aren't in the old one, ascending.
  std::vector<int> inserted;

  /// Costs a comparison a row, and more only for the rows between the first and the last that differ.
  [[nodiscard]] static ListChange between(std::span<const Screenshot> before,
                                          std::span<const Screenshot> after);

  /// Where the old `row` is now; if it has gone, where the first that was below it and is still there is; if
  /// there is none, where the last above it is. `gone` if nothing of the old list is left.
  [[nodiscard]] int rowNear(int row) const;

  bool operator==(const ListChange&) const = default;
};

}  // namespace sorrel
