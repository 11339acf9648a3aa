#include "app/history/ListChange.h"

#include "app/capture/ScreenshotStore.h"

#include <QHash>

#include <algorithm>

namespace sorrel {

ListChange ListChange::between(std::span<const Screenshot> before, std::span<const Screenshot> after) {
  const auto isSame = [](const Screenshot& one, const Screenshot& other) { return one.id() == other.id(); };
  const auto start = std::mismatch(before.begin(), before.end(), after.begin(), after.end(), isSame);
  const auto first = static_cast<std::size_t>(start.first - before.begin());
  const auto end = std::mismatch(before.rbegin(), before.rend() - static_cast<std::ptrdiff_t>(first),
                                 after.rbegin(), after.rend() - static_cast<std::ptrdiff_t>(first), isSame);
  const auto below = static_cast<std::size_t>(end.first - before.rbegin());

  QHash<QByteArray, int> known;  // the rows of `before` between those two
  for (std::size_t row = first; row < before.size() - below; ++row)
    known.insert(before[row].id(), static_cast<int>(row));
  ListChange change{std::vector<int>(before.size(), gone), {}};
  const auto place = [&](std::size_t oldRow, std::size_t newRow) {
    change.rows[oldRow] = static_cast<int>(newRow);
  };
  for (std::size_t row = 0; row < first; ++row)
    place(row, row);
  for (std::size_t row = first; row < after.size() - below; ++row) {
    if (const auto found = known.constFind(after[row].id()); found != known.constEnd())
      place(static_cast<std::size_t>(*found), row);
    else
      change.inserted.push_back(static_cast<int>(row));
  }
  for (std::size_t up = 1; up <= below; ++up)
    place(before.size() - up, after.size() - up);
  return change;
}

int ListChange::rowNear(int row) const {
  const auto isThere = [](int newRow) { return newRow != gone; };
  const auto at = rows.begin() + std::clamp(row, 0, static_cast<int>(rows.size()));
  if (const auto below = std::find_if(at, rows.end(), isThere); below != rows.end())
    return *below;
  const auto above = std::find_if(std::make_reverse_iterator(at), rows.rend(), isThere);
  return above == rows.rend() ? gone : *above;
}

}  // namespace sorrel
