#include "app/history/HistoryAccessibility.h"

#include "app/history/RelativeDate.h"
#include "app/history/ThumbnailGrid.h"
#include "app/history/ToastView.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/FilePath.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <algorithm>
#include <map>

namespace sorrel {
namespace {

/// One thumbnail, known by its screenshot: where that is in the list may change.
class AccessibleThumbnail : public QAccessibleInterface {
 public:
  AccessibleThumbnail(ThumbnailGrid* owner, const QByteArray& screenshot, int lastRow)
      : grid(owner), path(screenshot), knownRow(lastRow) {}

  /// -1 if the list doesn't hold it any more.
  [[nodiscard]] int row() const {
    if (!grid)
      return -1;
    const auto& list = grid->screenshots();
    const auto isAt = [&](int place) {
      return place >= 0 && place < std::ssize(list) && pathAt(place) == path;
    };
    if (!isAt(knownRow)) {
      const auto found = std::find_if(list.begin(), list.end(),
                                      [this](const Screenshot& shot) { return shot.path == path; });
      knownRow = found == list.end() ? -1 : static_cast<int>(found - list.begin());
    }
    return knownRow;
  }

  bool isValid() const override { return row() >= 0; }
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
    const Screenshot& shot = grid->screenshots()[static_cast<std::size_t>(row())];
    if (kind == QAccessible::Name)
      return platform::FilePath::text(platform::FilePath::baseName(shot.path)) + QStringLiteral(", ") +
             relativeDate(shot.date);
    return kind == QAccessible::Help ? localized(QStringLiteral("history.thumb.help")) : QString();
  }

  QRect rect() const override {
    if (!isValid())
      return {};
    const QRect inViewport = grid->cellRect(row());
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
    state.selected = grid->selection().row() == row();
    state.focused = grid->hasFocus() && state.selected;
    state.invisible = !grid->isVisible();
    state.offscreen = !grid->viewport()->rect().intersects(grid->cellRect(row()));
    return state;
  }

 private:
  [[nodiscard]] const QByteArray& pathAt(int place) const {
    return grid->screenshots()[static_cast<std::size_t>(place)].path;
  }

  const QPointer<ThumbnailGrid> grid;
  const QByteArray path;
  mutable int knownRow;
};

/// The thumbnails come first among the children, then the grid's own widgets.
class AccessibleGrid : public QAccessibleWidget {
 public:
  explicit AccessibleGrid(ThumbnailGrid* grid) : QAccessibleWidget(grid, QAccessible::List) {}
  ~AccessibleGrid() override {
    for (const auto& [path, thumbnail] : thumbnails)
      QAccessible::deleteAccessibleInterface(thumbnail);
  }

  int childCount() const override { return rows() + QAccessibleWidget::childCount(); }

  QAccessibleInterface* child(int number) const override {
    if (number >= rows())
      return QAccessibleWidget::child(number - rows());
    if (number < 0)
      return nullptr;
    const QByteArray& path = grid()->screenshots()[static_cast<std::size_t>(number)].path;
    const auto [place, isNew] = thumbnails.try_emplace(path, 0);
    if (isNew)
      place->second = QAccessible::registerAccessibleInterface(new AccessibleThumbnail(grid(), path, number));
    return QAccessible::accessibleInterface(place->second);
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    if (const auto* const thumbnail = dynamic_cast<const AccessibleThumbnail*>(child))
      return thumbnail->row();
    const int widget = QAccessibleWidget::indexOfChild(child);
    return widget < 0 ? widget : widget + rows();
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    const int row = grid()->rowAt(grid()->viewport()->mapFromGlobal(QPoint(x, y)));
    return row >= 0 ? child(row) : QAccessibleWidget::childAt(x, y);
  }

  QAccessibleInterface* focusChild() const override {
    const auto selected = grid()->selection().row();
    return grid()->hasFocus() && selected ? child(*selected) : QAccessibleWidget::focusChild();
  }

  /// The thumbnail of a screenshot that has left the list.
  void remove(const QByteArray& path) {
    const auto found = thumbnails.find(path);
    if (found == thumbnails.end())
      return;
    QAccessibleEvent left(QAccessible::accessibleInterface(found->second), QAccessible::ObjectDestroyed);
    QAccessible::updateAccessibility(&left);
    QAccessible::deleteAccessibleInterface(found->second);
    thumbnails.erase(found);
  }

 private:
  [[nodiscard]] ThumbnailGrid* grid() const { return static_cast<ThumbnailGrid*>(widget()); }
  [[nodiscard]] int rows() const { return static_cast<int>(grid()->screenshots().size()); }

  mutable std::map<QByteArray, QAccessible::Id> thumbnails;  // those that were asked for
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

void tellOfChange(ThumbnailGrid& grid, std::span<const Screenshot> before, const ListChange& change) {
  if (!QAccessible::isActive())
    return;
  auto* const accessible = dynamic_cast<AccessibleGrid*>(QAccessible::queryAccessibleInterface(&grid));
  if (!accessible)
    return;
  for (std::size_t row = 0; row < before.size(); ++row)
    if (change.rows[row] == ListChange::gone)
      accessible->remove(before[row].path);
  for (const int row : change.inserted) {
    QAccessibleEvent arrived(accessible->child(row), QAccessible::ObjectCreated);
    QAccessible::updateAccessibility(&arrived);
  }
}

void tellOfSelection(ThumbnailGrid& grid) {
  QAccessibleEvent focused(&grid, QAccessible::Focus);
  focused.setChild(grid.selection().row().value_or(-1));
  QAccessible::updateAccessibility(&focused);
}

}  // namespace sorrel
