#include "app/history/ThumbnailLayout.h"

#include <algorithm>
#include <cmath>

namespace sorrel {

ThumbnailLayout::ThumbnailLayout(qreal width, int count) : cellCount(count) {
  const qreal available = std::max(width - 2 * padding, minimumWidth);
  columnCount = static_cast<int>((available + spacing) / (minimumWidth + spacing));
  // Whole points, so that edges are sharp.
  side = std::floor(std::min((available - (columnCount - 1) * spacing) / columnCount, maximumWidth));
  left = std::floor((width - columnCount * side - (columnCount - 1) * spacing) / 2);
}

qreal ThumbnailLayout::height() const {
  const int rows = (cellCount + columnCount - 1) / columnCount;
  return rows == 0 ? 0 : rows * rowPitch() - spacing + 2 * padding;
}

QRectF ThumbnailLayout::cell(int index) const {
  const int row = index / columnCount;
  const int column = index % columnCount;
  return QRectF(left + column * (side + spacing), padding + row * rowPitch(), side, rowPitch() - spacing);
}

QRectF ThumbnailLayout::picture(int index) const {
  return QRectF(cell(index).topLeft(), QSizeF(side, side));
}

int ThumbnailLayout::at(const QPointF& point) const {
  const int column = static_cast<int>(std::floor((point.x() - left) / (side + spacing)));
  const int row = static_cast<int>(std::floor((point.y() - padding) / rowPitch()));
  if (column < 0 || column >= columnCount || row < 0)
    return -1;
  const int index = row * columnCount + column;
  return index < cellCount && cell(index).contains(point) ? index : -1;
}

std::pair<int, int> ThumbnailLayout::range(qreal top, qreal bottom) const {
  const auto row = [this](qreal y) { return static_cast<int>(std::floor((y - padding) / rowPitch())); };
  const int first = std::clamp(row(top) * columnCount, 0, cellCount);
  return {first, std::clamp((row(bottom) + 1) * columnCount, first, cellCount)};
}

int ThumbnailLayout::moved(int from, CursorMove move, qreal viewHeight) const {
  const int page = std::max(1, static_cast<int>(viewHeight / rowPitch()));
  const int above = from / columnCount, below = (cellCount - 1 - from) / columnCount;  // rows of the column
  switch (move) {
    case CursorMove::Left:
      return std::max(from - 1, 0);
    case CursorMove::Right:
      return std::min(from + 1, cellCount - 1);
    case CursorMove::Up:
      return from - std::min(1, above) * columnCount;
    case CursorMove::Down:
      return from + std::min(1, below) * columnCount;
    case CursorMove::PageUp:
      return from - std::min(page, above) * columnCount;
    case CursorMove::PageDown:
      return from + std::min(page, below) * columnCount;
    case CursorMove::First:
      return 0;
    case CursorMove::Last:
      return cellCount - 1;
  }
  return from;
}

int ThumbnailLayout::scrollRange(int viewHeight) const {
  return std::max(0, static_cast<int>(std::ceil(height())) - viewHeight);
}

int ThumbnailLayout::scrolledTo(int index, int scrolled, int viewHeight) const {
  const QRectF shown = cell(index).adjusted(0, -padding, 0, padding);
  const qreal lowest =
      shown.bottom() - viewHeight;  // counts less: of a cell that doesn't fit, the top is shown
  return static_cast<int>(std::round(std::min(std::max<qreal>(scrolled, lowest), shown.top())));
}

}  // namespace sorrel
