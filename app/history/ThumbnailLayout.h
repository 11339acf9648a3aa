#pragma once

#include <QRectF>

#include <utility>

namespace sorrel {

/// What a key does to the place of the keyboard among the cells.
enum class CursorMove { Left, Right, Up, Down, PageUp, PageDown, First, Last };

/// Where the cells of the thumbnail grid lie: as many equal columns as fit, in the list's order from left to
/// right and down. Points of the grid's contents, origin at the top left, y down.
class ThumbnailLayout {
 public:
  static constexpr qreal minimumWidth = 120;
  static constexpr qreal maximumWidth = 160;
  static constexpr qreal spacing = 10;
  static constexpr qreal padding = 12;
  /// Below the square picture: a gap, then the line with the date.
  static constexpr qreal captionGap = 4;
  static constexpr qreal captionHeight = 14;

  ThumbnailLayout(qreal width, int cellCount);

  [[nodiscard]] int columns() const { return columnCount; }
  [[nodiscard]] int count() const { return cellCount; }
  [[nodiscard]] qreal height() const;
  /// From one row to the next.
  [[nodiscard]] qreal rowPitch() const { return side + captionGap + captionHeight + spacing; }
  [[nodiscard]] QRectF cell(int index) const;
  /// The square at the cell's top that holds the picture.
  [[nodiscard]] QRectF picture(int index) const;
  /// The cell at a point; -1 where there is none, also between cells.
  [[nodiscard]] int at(const QPointF& point) const;
  /// The first cell of the rows that meet the strip from `top` to `bottom`, and the one after their last.
  [[nodiscard]] std::pair<int, int> range(qreal top, qreal bottom) const;

  /// Where the keyboard goes from cell `from` in a view that shows so much of the height. Left and right go
  /// along the list. Up and down keep the column, so they stay where it has no more cells; by whole views
  /// they go as far as it has. There must be a cell.
  [[nodiscard]] int moved(int from, CursorMove move, qreal viewHeight) const;
  /// How far a view of that height can be scrolled.
  [[nodiscard]] int scrollRange(int viewHeight) const;
  /// How far such a view must be scrolled to show all of a cell and the padding around it: the nearest to
  /// `scrolled`.
  [[nodiscard]] int scrolledTo(int cell, int scrolled, int viewHeight) const;

 private:
  int cellCount;
  int columnCount;
  qreal side;
  qreal left;
};

}  // namespace sorrel
