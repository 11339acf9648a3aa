#include "app/history/HistoryAccessibility.h"

#include "app/history/ThumbnailGrid.h"
#include "app/history/ToastView.h"

#include <QAccessibleWidget>

#include <map>

namespace sorrel {
namespace {

/// One thumbnail, known by its row: what is in that row may change, and it may go and come back.
class AccessibleThumbnail : public QAccessibleInterface {
 public:
  AccessibleThumbnail(ThumbnailGrid* owner, int gridRow) : grid(owner), row(gridRow) {}

  bool isValid() const override { return grid && index().isValid(); }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(grid); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  void setText(QAccessible::Text, const QString&) override {}

  QString text(QAccessible::Text kind) const override {
    if (!isValid())
      return {};
    if (kind == QAccessible::Name)
      return index().data(Qt::AccessibleTextRole).toString();
    return kind == QAccessible::Help ? index().data(Qt::ToolTipRole).toString() : QString();
  }

  QRect rect() const override {
    if (!isValid())
      return {};
    const QRect inViewport = grid->visualRect(index());
    return QRect(grid->viewport()->mapToGlobal(inViewport.topLeft()), inViewport.size());
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    if (!isValid()) {
      state.invalid = true;
      return state;
    }
    state.selectable = true;
    state.focusable = true;
    state.selected = grid->selectionModel()->isSelected(index());
    state.focused = grid->hasFocus() && grid->currentIndex() == index();
    state.invisible = !grid->isVisible();
    state.offscreen = !grid->viewport()->rect().intersects(grid->visualRect(index()));
    return state;
  }

 private:
  [[nodiscard]] QModelIndex index() const { return grid->model()->index(row, 0); }

  const QPointer<ThumbnailGrid> grid;
  const int row;
};

/// The thumbnails come first among the children, then the grid's own widgets.
class AccessibleGrid : public QAccessibleWidget {
 public:
  explicit AccessibleGrid(ThumbnailGrid* grid) : QAccessibleWidget(grid, QAccessible::List) {}
  ~AccessibleGrid() override {
    for (const auto& [row, id] : thumbnails)
      QAccessible::deleteAccessibleInterface(id);
  }

  int childCount() const override { return rows() + QAccessibleWidget::childCount(); }

  QAccessibleInterface* child(int number) const override {
    if (number >= rows())
      return QAccessibleWidget::child(number - rows());
    if (number < 0)
      return nullptr;
    const auto [place, isNew] = thumbnails.try_emplace(number, 0);
    if (isNew)
      place->second = QAccessible::registerAccessibleInterface(new AccessibleThumbnail(grid(), number));
    return QAccessible::accessibleInterface(place->second);
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    for (const auto& [row, id] : thumbnails)
      if (QAccessible::accessibleInterface(id) == child)
        return row;
    const int widget = QAccessibleWidget::indexOfChild(child);
    return widget < 0 ? widget : widget + rows();
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    const QModelIndex index = grid()->indexAt(grid()->viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? child(index.row()) : QAccessibleWidget::childAt(x, y);
  }

  QAccessibleInterface* focusChild() const override {
    const QModelIndex current = grid()->currentIndex();
    return grid()->hasFocus() && current.isValid() ? child(current.row()) : QAccessibleWidget::focusChild();
  }

 private:
  [[nodiscard]] ThumbnailGrid* grid() const { return static_cast<ThumbnailGrid*>(widget()); }
  [[nodiscard]] int rows() const { return grid()->model()->rowCount(); }

  mutable std::map<int, QAccessible::Id> thumbnails;  // by row, those that were asked for
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
  if (auto* const grid = dynamic_cast<ThumbnailGrid*>(object))
    return new AccessibleGrid(grid);
  if (auto* const toast = dynamic_cast<ToastView*>(object))
    return new QAccessibleWidget(toast, QAccessible::AlertMessage);
  return nullptr;
}

}  // namespace

void installHistoryAccessibility() {
  QAccessible::installFactory(interfaceOf);  // ignores one that it has
}

}  // namespace sorrel
