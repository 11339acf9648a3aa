#pragma once

#include "app/history/CellTransitions.h"
#include "app/history/ThumbnailButtons.h"
#include "app/history/ThumbnailLayout.h"
#include "app/history/ThumbnailSelection.h"
#include "app/history/ThumbnailsInView.h"
#include "platform/base/MainQueue.h"
#include "platform/desktop/Motion.h"

#include <QAbstractScrollArea>

#include <functional>
#include <map>

namespace sorrel {

/// The screenshots as a scrolling grid of thumbnails, one of which may be selected. It costs the same
/// whatever their number: it lays out by arithmetic, and holds pictures of the cells in view only. Rows are
/// places in the list; rectangles and points are the viewport's.
class ThumbnailGrid : public QAbstractScrollArea {
 public:
  struct Actions {
    std::function<void(const Screenshot&)> onEdit;
    std::function<void(const Screenshot&)> onCopy;
    std::function<void(const Screenshot&)> onDelete;
  };

  ThumbnailGrid(ThumbnailLoader& loader, Actions actions, QWidget* parent);
  ~ThumbnailGrid() override;

  /// Another list takes the place of the one on show: the selection stays with its screenshot and goes with
  /// it, and what the user has scrolled to stays.
  void setScreenshots(std::vector<Screenshot> screenshots);
  /// Shows all texts anew.
  void retranslate();

  [[nodiscard]] const std::vector<Screenshot>& screenshots() const { return list; }
  [[nodiscard]] const ThumbnailSelection& selection() const { return selected; }
  /// A cell's place, also where it is scrolled out of view.
  [[nodiscard]] QRect cellRect(int row) const;
  /// The row whose cell is at a point; -1 where there is none.
  [[nodiscard]] int rowAt(const QPointF& point) const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override { pressedRow = -1; }
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  [[nodiscard]] ThumbnailLayout layoutNow() const;
  [[nodiscard]] int scrolled() const;
  [[nodiscard]] QRectF inViewport(const QRectF& contentsRect) const;
  /// The rows of the list that meet the strip of the viewport from `top` down over `height`.
  [[nodiscard]] std::pair<int, int> rowsIn(int top, int height) const;
  [[nodiscard]] const Screenshot& at(int row) const { return list[static_cast<std::size_t>(row)]; }
  void fitScrollBar();

  void paintCell(QPainter& painter, int row, const ThumbnailLayout& layout);
  /// Draws the sign of progress anew wherever it turns.
  void stepProgress();
  void repaint(const QByteArray& path);

  /// Changes the selection by `change`, and tells those who look and those who listen.
  void changeSelection(const std::function<void()>& change);
  void select(int row);
  void hoverAt(int row);
  void hoverAtPointer();
  void copy(const Screenshot& screenshot);
  void startDrag(int row);

  const Actions actions;
  std::vector<Screenshot> list;
  ThumbnailSelection selected;
  bool isByKeyboard = false;  // whether the keyboard's place is marked while nothing is selected
  int hoveredRow = -1;
  int pressedRow = -1;
  QPoint pressedAt;
  QPoint grabbedAt;  // from the corner of the square that holds the picture
  ThumbnailsInView thumbnails;
  CellTransitions selections;
  CellTransitions flashes;
  ThumbnailButtons buttons;
  platform::Rotation progress;
  platform::WorkItem dateRefresh;
  std::map<QByteArray, platform::WorkItem> flashEnds;
};

}  // namespace sorrel
