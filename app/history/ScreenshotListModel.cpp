#include "app/history/ScreenshotListModel.h"

#include "app/history/RelativeDate.h"
#include "app/settings/LocalizationManager.h"

#include <algorithm>

namespace sorrel {

namespace FilePath = platform::FilePath;

void ScreenshotListModel::setScreenshots(std::vector<Screenshot> screenshots) {
  beginResetModel();
  list = std::move(screenshots);
  endResetModel();
}

std::span<const Screenshot> ScreenshotListModel::range(int first, int last) const {
  return std::span(list).subspan(static_cast<size_t>(first), static_cast<size_t>(last - first));
}

int ScreenshotListModel::rowOf(const QByteArray& path) const {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const auto& shot) { return shot.path == path; });
  return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

int ScreenshotListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list.size());
}

QVariant ScreenshotListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid())
    return {};
  const Screenshot& shot = at(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return relativeDate(shot.date);
    case Qt::AccessibleTextRole:
      return FilePath::text(FilePath::baseName(shot.path)) + QStringLiteral(", ") + relativeDate(shot.date);
    case Qt::ToolTipRole:
      return localized(QStringLiteral("history.thumb.help"));
    default:
      return {};
  }
}

}  // namespace sorrel
