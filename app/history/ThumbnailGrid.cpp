#include "app/history/ThumbnailGrid.h"

#include "app/history/HistoryAccessibility.h"
#include "app/history/HistoryColors.h"
#include "app/history/RelativeDate.h"
#include "app/history/ThumbnailDrag.h"
#include "app/history/ThumbnailPainter.h"
#include "app/look/SlimScrollBar.h"
#include "app/settings/LocalizationManager.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace sorrel {

using namespace std::chrono_literals;

namespace {

constexpr auto flashDuration = 700ms;
constexpr int progressSteps = 24;
constexpr auto progressInterval = 40ms;

std::optional<CursorMove> moveOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return CursorMove::Left;
    case Qt::Key_Right:
      return CursorMove::Right;
    case Qt::Key_Up:
      return CursorMove::Up;
    case Qt::Key_Down:
      return CursorMove::Down;
    case Qt::Key_PageUp:
      return CursorMove::PageUp;
    case Qt::Key_PageDown:
      return CursorMove::PageDown;
    case Qt::Key_Home:
      return CursorMove::First;
    case Qt::Key_End:
      return CursorMove::Last;
    default:
      return std::nullopt;
  }
}

}  // namespace

ThumbnailGrid::ThumbnailGrid(ThumbnailLoader& loader, Actions callbacks, QWidget* parent)
    : QAbstractScrollArea(parent),
      actions(std::move(callbacks)),
      thumbnails(loader, [this](const QByteArray& path) { repaint(path); }),
      selections(150ms, [this](const QByteArray& path) { repaint(path); }),
      flashes(250ms, [this](const QByteArray& path) { repaint(path); }),
      buttons(
          viewport(), [this] { actions.onDelete(Screenshot(at(hoveredRow))); },
          [this] { copy(Screenshot(at(hoveredRow))); }),
      progress(progressInterval, progressSteps, [this] { stepProgress(); }) {
  setFrameShape(NoFrame);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  new SlimScrollBar(*this);  // lies in the padding, so that it takes nothing from the cells
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  // It paints the panel's background itself, so that what lies below isn't painted again with each step.
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setMouseTracking(true);
  dateRefresh = platform::MainQueue::main().scheduleRepeating(10s, 5s, [this] { viewport()->update(); });
  retranslate();
}

ThumbnailGrid::~ThumbnailGrid() = default;

void ThumbnailGrid::setScreenshots(std::vector<Screenshot> screenshots) {
  const ListChange change = ListChange::between(list, screenshots);
  const std::vector<Screenshot> before = std::exchange(list, std::move(screenshots));
  const auto selectedBefore = selected.row();
  selected.follow(change);
  if (selectedBefore && !selected.row())
    selections.setOn(before[static_cast<std::size_t>(*selectedBefore)].path, false);
  pressedRow = -1;
  fitScrollBar();
  hoveredRow = -1;  // it may have another screenshot now
  hoverAtPointer();
  viewport()->update();
  tellOfChange(*this, before, change);
}

void ThumbnailGrid::retranslate() {
  setAccessibleName(localized(QStringLiteral("history.title")));
  buttons.retranslate();
  viewport()->update();
}

ThumbnailLayout ThumbnailGrid::layoutNow() const {
  return ThumbnailLayout(viewport()->width(), static_cast<int>(list.size()));
}

int ThumbnailGrid::scrolled() const {
  return verticalScrollBar()->value();
}

QRectF ThumbnailGrid::inViewport(const QRectF& rect) const {
  return rect.translated(0, -scrolled());
}

QRect ThumbnailGrid::cellRect(int row) const {
  return inViewport(layoutNow().cell(row)).toAlignedRect();
}

int ThumbnailGrid::rowAt(const QPointF& point) const {
  return layoutNow().at(point + QPointF(0, scrolled()));
}

std::pair<int, int> ThumbnailGrid::rowsIn(int top, int height) const {
  return layoutNow().range(scrolled() + top, scrolled() + top + height - 1);
}

void ThumbnailGrid::fitScrollBar() {
  const ThumbnailLayout layout = layoutNow();
  QScrollBar* const bar = verticalScrollBar();
  bar->setPageStep(viewport()->height());
  bar->setSingleStep(static_cast<int>(layout.rowPitch() / 3));
  bar->setRange(0, layout.scrollRange(viewport()->height()));
}

void ThumbnailGrid::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  fitScrollBar();
}

void ThumbnailGrid::scrollContentsBy(int, int) {
  viewport()->update();
  hoveredRow = -1;  // its buttons go with it
  hoverAtPointer();
}

void ThumbnailGrid::stepProgress() {
  bool isLoading = false;
  const auto [first, last] = rowsIn(0, viewport()->height());
  for (int row = first; row < last; ++row) {
    if (thumbnails.isLoading(at(row))) {
      isLoading = true;
      viewport()->update(inViewport(layoutNow().picture(row)).toAlignedRect());
    }
  }
  if (!isLoading)
    progress.stop();
}

void ThumbnailGrid::repaint(const QByteArray& path) {
  constexpr int overhang = 8;  // the glow and the growth of a copied thumbnail, the keyboard's ring
  const auto [first, last] = rowsIn(-overhang, viewport()->height() + 2 * overhang);
  for (int row = first; row < last; ++row)
    if (at(row).path == path)
      viewport()->update(cellRect(row).adjusted(-overhang, -overhang, overhang, overhang));
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
  const auto inView =
      std::span(list).subspan(static_cast<std::size_t>(top), static_cast<std::size_t>(bottom - top));
  if (thumbnails.show(inView, layout.picture(0).width(), devicePixelRatioF()) ==
      ThumbnailsInView::State::Loading)
    progress.start();
  const auto [first, last] = rowsIn(event->rect().top(), event->rect().height());
  for (int row = first; row < last; ++row)
    paintCell(painter, row, layout);
}

void ThumbnailGrid::paintCell(QPainter& painter, int row, const ThumbnailLayout& layout) {
  const Screenshot& shot = at(row);
  const QRectF square = inViewport(layout.picture(row));
  QRectF caption = inViewport(layout.cell(row));
  caption.setTop(square.bottom() + ThumbnailLayout::captionGap);
  ThumbnailLook look{thumbnails.picture(shot), relativeDate(shot.date), selections.value(shot.path),
                     flashes.value(shot.path)};
  if (thumbnails.isLoading(shot))
    look.progressTurn = progress.turn();
  look.isFocused = isByKeyboard && hasFocus() && !selected.row() && row == selected.keyboardRow();
  paintThumbnail(painter, square, caption, look);
}

bool ThumbnailGrid::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave)
    hoverAt(-1);
  if (event->type() == QEvent::ToolTip) {
    const auto& help = *static_cast<QHelpEvent*>(event);
    if (const int row = rowAt(help.pos()); row >= 0)
      QToolTip::showText(help.globalPos(), localized(QStringLiteral("history.thumb.help")), viewport(),
                         cellRect(row));
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void ThumbnailGrid::hoverAtPointer() {
  hoverAt(viewport()->underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos())) : -1);
}

void ThumbnailGrid::hoverAt(int row) {
  hoveredRow = row;
  if (row >= 0)
    buttons.showOn(inViewport(layoutNow().picture(row)).toRect());
  else
    buttons.hide();
}

void ThumbnailGrid::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
    isByKeyboard = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
  viewport()->update();
}

void ThumbnailGrid::focusOutEvent(QFocusEvent*) {
  viewport()->update();
}

void ThumbnailGrid::changeSelection(const std::function<void()>& change) {
  const auto before = selected.row();
  viewport()->update();  // of the keyboard's ring too
  change();
  const auto now = selected.row();
  verticalScrollBar()->setValue(layoutNow().scrolledTo(*now, scrolled(), viewport()->height()));
  if (now == before)
    return;
  if (before)
    selections.setOn(at(*before).path, false);
  selections.setOn(at(*now).path, true);
  tellOfSelection(*this);
}

void ThumbnailGrid::select(int row) {
  changeSelection([&] { selected.select(row); });
}

void ThumbnailGrid::keyPressEvent(QKeyEvent* event) {
  const auto row = selected.row();
  const auto move = moveOf(event->key());
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  isByKeyboard = isByKeyboard || move || row;
  if (move && !list.empty())
    changeSelection([&] { selected.move(*move, layoutNow(), viewport()->height()); });
  else if (row && isReturn)
    actions.onEdit(Screenshot(at(*row)));
  else if (row && event->matches(QKeySequence::Delete))
    actions.onDelete(Screenshot(at(*row)));
  else if (row && event->matches(QKeySequence::Copy))
    copy(Screenshot(at(*row)));
  else
    event->ignore();
}

void ThumbnailGrid::copy(const Screenshot& screenshot) {
  actions.onCopy(screenshot);
  flashes.setOn(screenshot.path, true);
  flashEnds[screenshot.path] = platform::MainQueue::main().asyncAfter(
      flashDuration, [this, path = screenshot.path] { flashes.setOn(path, false); });
}

void ThumbnailGrid::mousePressEvent(QMouseEvent* event) {
  isByKeyboard = false;
  const int row = rowAt(event->position());
  if (row < 0)
    return;
  if (event->button() == Qt::LeftButton) {
    pressedRow = row;
    pressedAt = event->position().toPoint();
    grabbedAt = (event->position() - inViewport(layoutNow().picture(row)).topLeft()).toPoint();
  }
  select(row);  // which may scroll
}

void ThumbnailGrid::mouseMoveEvent(QMouseEvent* event) {
  hoverAt(rowAt(event->position()));
  const int distance = (event->position().toPoint() - pressedAt).manhattanLength();
  if (pressedRow >= 0 && (event->buttons() & Qt::LeftButton) && distance >= QApplication::startDragDistance())
    startDrag(std::exchange(pressedRow, -1));
}

void ThumbnailGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (const int row = rowAt(event->position()); row >= 0 && event->button() == Qt::LeftButton)
    actions.onEdit(Screenshot(at(row)));
}

void ThumbnailGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const int row = isByKey ? selected.row().value_or(-1) : rowAt(event->pos());
  if (row < 0)
    return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const char* key, const QKeySequence& keys, auto action) {
    QAction* const entry = menu->addAction(localized(QString::fromLatin1(key)), this, action);
    entry->setShortcut(keys);
    entry->setShortcutVisibleInContextMenu(true);
  };
  const Screenshot shot = at(row);
  add("history.thumb.edit", Qt::Key_Return, [this, shot] { actions.onEdit(shot); });
  add("history.thumb.copy", QKeySequence::Copy, [this, shot] { copy(shot); });
  add("history.thumb.delete", QKeySequence::Delete, [this, shot] { actions.onDelete(shot); });
  menu->popup(isByKey ? viewport()->mapToGlobal(cellRect(row).center()) : event->globalPos());
}

void ThumbnailGrid::startDrag(int row) {
  const QPixmap picture = thumbnails.picture(at(row));
  const QRectF square(QPointF(), layoutNow().picture(row).size());
  dragFile(at(row).url(), picture, grabbedAt - picturePlace(square, picture).toPoint(), *this);
}

}  // namespace sorrel
