#include "app/history/ThumbnailGrid.h"

#include "app/history/HistoryColors.h"
#include "app/history/ThumbnailPainter.h"
#include "app/look/SlimScrollBar.h"
#include "app/look/SymbolButton.h"
#include "app/settings/LocalizationManager.h"

#include <QAccessible>
#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include <cmath>

namespace sorrel {

using namespace std::chrono_literals;

namespace {

constexpr auto flashDuration = 700ms;
constexpr int progressSteps = 24;
constexpr auto progressInterval = 40ms;
constexpr int buttonInset = 4;
constexpr int buttonSide = 20;  // of the disc that the cross of 24 has around it

SymbolButton::Look deleteLook() {
  return {QStringLiteral("xmark.circle.fill"), 24, HistoryColors::veil, HistoryColors::onTitleBar};
}

SymbolButton::Look copyLook() {
  return {QStringLiteral("dagger"), 13, HistoryColors::onTitleBar, {0, 0}, HistoryColors::veil};
}

}  // namespace

ThumbnailGrid::ThumbnailGrid(ThumbnailLoader& loader, Actions callbacks, QWidget* parent)
    : QAbstractItemView(parent),
      actions(std::move(callbacks)),
      thumbnails(loader, [this](const QByteArray& path) { repaint(path); }),
      selections(150ms, [this](const QByteArray& path) { repaint(path); }),
      flashes(250ms, [this](const QByteArray& path) { repaint(path); }),
      deleteButton(new SymbolButton(deleteLook(), buttonSide, viewport())),
      copyButton(new SymbolButton(copyLook(), buttonSide, viewport())),
      progress(progressInterval, progressSteps, [this] { stepProgress(); }) {
  setModel(&screenshots);
  setFrameShape(NoFrame);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  new SlimScrollBar(*this);  // lies in the padding, so that it takes nothing from the cells
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSelectionMode(SingleSelection);
  setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  // It paints the panel's background itself, so that what lies below isn't painted again with each step.
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setMouseTracking(true);
  for (SymbolButton* const button : {deleteButton, copyButton}) {
    button->setFocusPolicy(Qt::NoFocus);
    button->hide();
  }
  connect(deleteButton, &QAbstractButton::clicked, this, [this] {
    if (hoveredRow >= 0)
      actions.onDelete(Screenshot(screenshots.at(hoveredRow)));
  });
  connect(copyButton, &QAbstractButton::clicked, this, [this] {
    if (hoveredRow >= 0)
      copy(hoveredRow);
  });
  dateRefresh = platform::MainQueue::main().scheduleRepeating(10s, 5s, [this] { viewport()->update(); });
  retranslate();
}

ThumbnailGrid::~ThumbnailGrid() = default;

void ThumbnailGrid::setScreenshots(std::vector<Screenshot> list) {
  const int scrolledTo = verticalOffset();
  screenshots.setScreenshots(std::move(list));
  if (const int row = screenshots.rowOf(selected); row >= 0)
    selectionModel()->setCurrentIndex(screenshots.index(row), QItemSelectionModel::ClearAndSelect);
  updateGeometries();
  // The item view goes to the current row; who looks elsewhere stays there.
  verticalScrollBar()->setValue(scrolledTo);
  setHoveredRow(viewport()->underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos())) : -1);
  viewport()->update();
}

void ThumbnailGrid::retranslate() {
  setAccessibleName(localized(QStringLiteral("history.title")));
  deleteButton->setHelp(localized(QStringLiteral("history.thumb.delete")));
  copyButton->setHelp(localized(QStringLiteral("history.thumb.copy")));
  viewport()->update();
}

ThumbnailLayout ThumbnailGrid::layoutNow() const {
  return ThumbnailLayout(viewport()->width(), screenshots.rowCount());
}

int ThumbnailGrid::verticalOffset() const {
  return verticalScrollBar()->value();
}

QRectF ThumbnailGrid::shifted(const QRectF& rect) const {
  return rect.translated(0, -verticalOffset());
}

int ThumbnailGrid::rowAt(const QPointF& point) const {
  return layoutNow().at(point + QPointF(0, verticalOffset()));
}

QRect ThumbnailGrid::visualRect(const QModelIndex& index) const {
  return index.isValid() ? shifted(layoutNow().cell(index.row())).toAlignedRect() : QRect();
}

QModelIndex ThumbnailGrid::indexAt(const QPoint& point) const {
  const int row = rowAt(point);
  return row < 0 ? QModelIndex() : screenshots.index(row);
}

void ThumbnailGrid::scrollTo(const QModelIndex& index, ScrollHint) {
  if (!index.isValid())
    return;
  const QRectF cell = shifted(layoutNow().cell(index.row()));
  const qreal margin = ThumbnailLayout::padding;
  const qreal above = cell.top() - margin;
  const qreal below = cell.bottom() + margin - viewport()->height();
  const qreal by = above < 0 ? above : std::max(below, 0.0);
  verticalScrollBar()->setValue(verticalOffset() + static_cast<int>(std::round(by)));
}

QModelIndex ThumbnailGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int count = screenshots.rowCount();
  if (count == 0)
    return {};
  const ThumbnailLayout layout = layoutNow();
  const int page = std::max(1, static_cast<int>(viewport()->height() / layout.rowPitch()));
  if (!currentIndex().isValid() && action != MoveHome && action != MoveEnd)
    return screenshots.index(std::min(lastRow, count - 1));
  const int row = std::max(currentIndex().row(), 0);
  // Up and down keep the column, so they stay where the column has no more cells; by whole pages they go as
  // far as it has.
  const auto vertically = [&](int rows) {
    const int step = rows < 0 ? -layout.columns() : layout.columns();
    int to = row;
    for (int i = 0; i < std::abs(rows) && to + step >= 0 && to + step < count; ++i)
      to += step;
    return to;
  };
  switch (action) {
    case MoveUp:
      return screenshots.index(vertically(-1));
    case MoveDown:
      return screenshots.index(vertically(1));
    case MovePageUp:
      return screenshots.index(vertically(-page));
    case MovePageDown:
      return screenshots.index(vertically(page));
    case MoveHome:
      return screenshots.index(0);
    case MoveEnd:
      return screenshots.index(count - 1);
    case MoveLeft:
    case MovePrevious:
      return screenshots.index(std::max(row - 1, 0));
    case MoveRight:
    case MoveNext:
      return screenshots.index(std::min(row + 1, count - 1));
  }
  return currentIndex();
}

void ThumbnailGrid::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) {
  if (const QModelIndex index = indexAt(rect.center()); index.isValid())
    selectionModel()->select(index, flags);
}

QRegion ThumbnailGrid::visualRegionForSelection(const QItemSelection& selection) const {
  const auto indexes = selection.indexes();
  return indexes.isEmpty() ? QRegion() : QRegion(visualRect(indexes.first()));
}

void ThumbnailGrid::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
  QAbstractItemView::selectionChanged(now, before);
  if (now.isEmpty())
    return;  // a list that was replaced: the selection is told by its path
  const int row = now.indexes().first().row();
  lastRow = row;
  select(screenshots.at(row).path);
  QAccessibleEvent focused(this, QAccessible::Focus);
  focused.setChild(row);
  QAccessible::updateAccessibility(&focused);
}

void ThumbnailGrid::select(const QByteArray& path) {
  if (path == selected)
    return;
  if (!selected.isEmpty())
    selections.setOn(selected, false);
  selected = path;
  if (!selected.isEmpty())
    selections.setOn(selected, true);
}

void ThumbnailGrid::updateGeometries() {
  QAbstractItemView::updateGeometries();
  const ThumbnailLayout layout = layoutNow();
  QScrollBar* const bar = verticalScrollBar();
  bar->setPageStep(viewport()->height());
  bar->setSingleStep(static_cast<int>(layout.rowPitch() / 3));
  bar->setRange(0, std::max(0, static_cast<int>(std::ceil(layout.height())) - viewport()->height()));
}

void ThumbnailGrid::scrollContentsBy(int, int) {
  viewport()->update();
  setHoveredRow(viewport()->underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos())) : -1);
  placeButtons();
}

std::pair<int, int> ThumbnailGrid::rowsIn(int top, int height) const {
  return layoutNow().range(verticalOffset() + top, verticalOffset() + top + height - 1);
}

void ThumbnailGrid::stepProgress() {
  bool isLoading = false;
  const auto [first, last] = rowsIn(0, viewport()->height());
  for (int row = first; row < last; ++row) {
    if (thumbnails.picture(screenshots.at(row)).isNull()) {
      isLoading = true;
      viewport()->update(shifted(layoutNow().picture(row)).toAlignedRect());
    }
  }
  if (!isLoading)
    progress.stop();
}

void ThumbnailGrid::repaint(const QByteArray& path) {
  if (const int row = screenshots.rowOf(path); row >= 0) {
    constexpr int overhang = 8;  // the glow and the growth of a copied thumbnail
    viewport()->update(visualRect(screenshots.index(row)).adjusted(-overhang, -overhang, overhang, overhang));
  }
}

void ThumbnailGrid::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(event->rect(), HistoryColors::backgroundOf(*this));
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  QFont font = this->font();
  font.setPixelSize(10);
  painter.setFont(font);
  const ThumbnailLayout layout = layoutNow();
  // Whatever happens between two frames costs this once, and what was scrolled past unseen costs nothing.
  const auto [top, bottom] = rowsIn(0, viewport()->height());
  if (thumbnails.show(screenshots.range(top, bottom), layout.picture(0).width(), devicePixelRatioF()) ==
      ThumbnailsInView::State::Loading)
    progress.start();
  const auto [first, last] = rowsIn(event->rect().top(), event->rect().height());
  for (int row = first; row < last; ++row) {
    const Screenshot& shot = screenshots.at(row);
    const QRectF square = shifted(layout.picture(row));
    QRectF caption = shifted(layout.cell(row));
    caption.setTop(square.bottom() + ThumbnailLayout::captionGap);
    paintThumbnail(painter, square, caption,
                   {thumbnails.picture(shot), screenshots.index(row).data().toString(),
                    selections.value(shot.path), flashes.value(shot.path), progress.turn()});
  }
}

bool ThumbnailGrid::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave)
    setHoveredRow(-1);
  return QAbstractItemView::viewportEvent(event);
}

void ThumbnailGrid::setHoveredRow(int row) {
  if (row == hoveredRow)
    return;
  hoveredRow = row;
  placeButtons();
}

void ThumbnailGrid::placeButtons() {
  const bool isHovering = hoveredRow >= 0;
  if (isHovering) {
    const QRect square = shifted(layoutNow().picture(hoveredRow)).toRect();
    const QRect inside = square.adjusted(buttonInset, buttonInset, -buttonInset, -buttonInset);
    deleteButton->move(inside.right() + 1 - deleteButton->width(), inside.top());
    copyButton->move(inside.right() + 1 - copyButton->width(), inside.bottom() + 1 - copyButton->height());
  }
  deleteButton->setVisible(isHovering);
  copyButton->setVisible(isHovering);
}

void ThumbnailGrid::focusInEvent(QFocusEvent* event) {
  // Not the item view's own: that makes the first row current, though nothing is selected yet.
  QAbstractScrollArea::focusInEvent(event);
}

void ThumbnailGrid::keyPressEvent(QKeyEvent* event) {
  const int row = selected.isEmpty() ? -1 : screenshots.rowOf(selected);
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (row >= 0 && isReturn)
    actions.onEdit(Screenshot(screenshots.at(row)));
  else if (row >= 0 && event->matches(QKeySequence::Delete))
    actions.onDelete(Screenshot(screenshots.at(row)));
  else if (row >= 0 && event->matches(QKeySequence::Copy))
    copy(row);
  else
    QAbstractItemView::keyPressEvent(event);
}

void ThumbnailGrid::copy(int row) {
  const Screenshot shot = screenshots.at(row);
  actions.onCopy(shot);
  flashes.setOn(shot.path, true);
  flashEnds[shot.path] = platform::MainQueue::main().asyncAfter(
      flashDuration, [this, path = shot.path] { flashes.setOn(path, false); });
}

void ThumbnailGrid::mousePressEvent(QMouseEvent* event) {
  const int row = rowAt(event->position());
  if (row < 0)
    return;
  selectionModel()->setCurrentIndex(screenshots.index(row), QItemSelectionModel::ClearAndSelect);
  if (event->button() == Qt::LeftButton) {
    pressedRow = row;
    pressedAt = event->position().toPoint();
  }
}

void ThumbnailGrid::mouseMoveEvent(QMouseEvent* event) {
  setHoveredRow(rowAt(event->position()));
  const int distance = (event->position().toPoint() - pressedAt).manhattanLength();
  if (pressedRow >= 0 && (event->buttons() & Qt::LeftButton) && distance >= QApplication::startDragDistance())
    startDrag(std::exchange(pressedRow, -1));
}

void ThumbnailGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (const int row = rowAt(event->position()); row >= 0 && event->button() == Qt::LeftButton)
    actions.onEdit(Screenshot(screenshots.at(row)));
}

void ThumbnailGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const int row = isByKey ? currentIndex().row() : rowAt(event->pos());
  if (row < 0)
    return;
  const Screenshot shot = screenshots.at(row);
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const char* key, const QKeySequence& keys, auto action) {
    QAction* const entry = menu->addAction(localized(QString::fromLatin1(key)), this, action);
    entry->setShortcut(keys);
  };
  add("history.thumb.edit", Qt::Key_Return, [this, shot] { actions.onEdit(shot); });
  add("history.thumb.copy", QKeySequence::Copy, [this, shot] {
    if (const int now = screenshots.rowOf(shot.path); now >= 0)
      copy(now);
  });
  add("history.thumb.delete", QKeySequence::Delete, [this, shot] { actions.onDelete(shot); });
  menu->popup(isByKey ? viewport()->mapToGlobal(visualRect(currentIndex()).center()) : event->globalPos());
}

void ThumbnailGrid::startDrag(int row) {
  const Screenshot& shot = screenshots.at(row);
  const QPixmap picture = thumbnails.picture(shot);
  // The drag runs an event loop of its own, in which the panel may close: it starts from outside of this
  // view's calls, and owes nothing to it.
  const auto drag = [url = shot.url(), picture] {
    auto* const contents = new QMimeData;
    contents->setUrls({url});
    auto* const session = new QDrag(qApp);
    session->setMimeData(contents);
    session->setPixmap(picture);
    session->setHotSpot(QRectF(QPointF(), picture.deviceIndependentSize()).center().toPoint());
    session->exec(Qt::CopyAction);
  };
  QMetaObject::invokeMethod(qApp, drag, Qt::QueuedConnection);
}

}  // namespace sorrel
