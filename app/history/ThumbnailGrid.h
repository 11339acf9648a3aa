#pragma once

#include "app/history/CellTransitions.h"
#include "app/history/ScreenshotListModel.h"
#include "app/history/ThumbnailLayout.h"
#include "app/history/ThumbnailsInView.h"
#include "platform/base/MainQueue.h"
#include "platform/desktop/Motion.h"

#include <QAbstractItemView>

#include <functional>
#include <map>

namespace sorrel {

class SymbolButton;

/// The screenshots as a scrolling grid of thumbnails. It costs the same whatever their number: it lays out by
/// arithmetic, and holds pictures of the cells in view only.
class ThumbnailGrid : public QAbstractItemView {
 public:
  struct Actions {
    std::function<void(const Screenshot&)> onEdit;
    std::function<void(const Screenshot&)> onCopy;
    std::function<void(const Screenshot&)> onDelete;
  };

  ThumbnailGrid(ThumbnailLoader& loader, Actions actions, QWidget* parent);
  ~ThumbnailGrid() override;

  /// Replaces the list; the selection stays with its screenshot, and goes with it.
  void setScreenshots(std::vector<Screenshot> screenshots);
  /// Shows all texts anew.
  void retranslate();

  [[nodiscard]] const QByteArray& selectedID() const { return selected; }

  // QAbstractItemView
  [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
  [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 protected:
  [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  [[nodiscard]] int horizontalOffset() const override { return 0; }
  [[nodiscard]] int verticalOffset() const override;
  [[nodiscard]] bool isIndexHidden(const QModelIndex&) const override { return false; }
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
  [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
  void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;
  void updateGeometries() override;
  void scrollContentsBy(int dx, int dy) override;

  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override { pressedRow = -1; }
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  [[nodiscard]] ThumbnailLayout layoutNow() const;
  [[nodiscard]] QRectF shifted(const QRectF& contentsRect) const;
  [[nodiscard]] int rowAt(const QPointF& viewportPoint) const;
  /// The rows of the list that meet the strip of the viewport from `top` down over `height`.
  [[nodiscard]] std::pair<int, int> rowsIn(int top, int height) const;
  /// Draws the sign of progress anew wherever it is shown.
  void stepProgress();
  void repaint(const QByteArray& path);
  void select(const QByteArray& path);
  void setHoveredRow(int row);
  void placeButtons();
  void copy(int row);
  void startDrag(int row);

  const Actions actions;
  ScreenshotListModel screenshots;
  ThumbnailsInView thumbnails;
  QByteArray selected;  // the path
  int lastRow = 0;      // where the keyboard goes on when nothing is selected
  int hoveredRow = -1;
  int pressedRow = -1;
  QPoint pressedAt;
  CellTransitions selections;
  CellTransitions flashes;
  SymbolButton* const deleteButton;
  SymbolButton* const copyButton;
  platform::Rotation progress;
  platform::WorkItem dateRefresh;
  std::map<QByteArray, platform::WorkItem> flashEnds;  // by path
};

}  // namespace sorrel
