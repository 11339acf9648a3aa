#pragma once

#include "app/capture/ScreenshotStore.h"

#include <QAbstractListModel>

#include <span>
#include <vector>

namespace sorrel {

/// The history's list as the grid and assistive technology read it: one row a screenshot, in the list's
/// order.
class ScreenshotListModel : public QAbstractListModel {
 public:
  /// The list is replaced whole.
  void setScreenshots(std::vector<Screenshot> screenshots);
  [[nodiscard]] const Screenshot& at(int row) const { return list[static_cast<size_t>(row)]; }
  /// Those from row `first` up to and without `last`.
  [[nodiscard]] std::span<const Screenshot> range(int first, int last) const;
  /// The row of the screenshot with that path; -1 if there is none.
  [[nodiscard]] int rowOf(const QByteArray& path) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<Screenshot> list;
};

}  // namespace sorrel
