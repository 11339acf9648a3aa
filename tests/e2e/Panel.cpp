#include "tests/e2e/Panel.h"

#include "app/history/PanelGeometry.h"
#include "app/history/ThumbnailLayout.h"

#include <QColor>

#include <linux/input-event-codes.h>
#include <stdexcept>

namespace e2e {
namespace {

using namespace sorrel;
using namespace Qt::StringLiterals;

constexpr QSize panelSize = PanelGeometry::size;
constexpr int titleBarHeight = 39;
constexpr int buttonInset = 14;  // from a thumbnail's edges to the middle of a button on it

bool isNear(const QRect& one, const QRect& other) {
  constexpr int rounding = 2;
  return (one.topLeft() - other.topLeft()).manhattanLength() <= rounding &&
         (one.bottomRight() - other.bottomRight()).manhattanLength() <= rounding;
}

}  // namespace

Panel::Panel(Desktop& owner, Sorrel& program) : desktop(owner), sorrel(program) {
}

std::optional<Panel::Window> Panel::window() const {
  const QSize size = (QSizeF(panelSize) * desktop.scale()).toSize();
  for (const ScreenWindow& each : desktop.screen().windows()) {
    QRect frame({}, size);
    frame.moveCenter(each.area.center());
    const bool isTitled = each.title == u"History"_s || each.title == u"캡처 기록"_s;
    if (isTitled && each.area.contains(frame))
      return Window{each.id, frame};
  }
  return std::nullopt;
}

QRect Panel::place(const QRect& monitor) const {
  const double scale = desktop.scale();
  const QRect icon = sorrel.statusItem();
  const QSize size = (QSizeF(panelSize) * scale).toSize();
  const int margin = qRound(PanelGeometry::sideMargin * scale);
  const int gap = qRound(PanelGeometry::gap * scale);
  const int left = std::clamp(icon.left() + (icon.width() - size.width()) / 2, monitor.left() + margin,
                              monitor.right() + 1 - margin - size.width());
  const QRect bar = desktop.screen().find(u"trayer"_s)->area;
  const bool isAtTop = icon.top() < monitor.center().y();
  const int top = isAtTop ? bar.bottom() + 1 + gap : bar.top() - gap - size.height();
  return QRect(QPoint(left, top), size);
}

Panel::Window Panel::open() {
  const QRect where = place();
  sorrel.pressHotKey(KEY_F);
  return waitUntilOpen(where);
}

Panel::Window Panel::openByClick() {
  click(sorrel.statusItem().center());
  return waitUntilOpen();
}

Panel::Window Panel::waitUntilOpen(const QRect& where) const {
  std::optional<Window> found;
  const auto isThere = [&](const QRect& frame) {
    return desktop.scale() == 1 ? frame == where : isNear(frame, where);
  };
  until("the panel is in its place and has the keyboard", [&] {
    found = window();
    return found && isThere(found->frame) && desktop.screen().keyboardWindow() == found->id;
  });
  (void)desktop.screen().settledPicture();
  return *found;
}

void Panel::close() {
  sorrel.pressHotKey(KEY_F);
  waitUntilClosed();
}

void Panel::waitUntilClosed() const {
  until("the panel is closed", [this] { return !window(); });
  (void)desktop.screen().settledPicture();
  if (window())
    throw std::runtime_error("the panel is open again");
}

QPoint Panel::at(double x, double y) const {
  const std::optional<Window> open = window();
  if (!open)
    throw std::runtime_error("there is no panel");
  return open->frame.topLeft() + QPoint(qRound(x * desktop.scale()), qRound(y * desktop.scale()));
}

QRect Panel::thumbnail(int index) const {
  const QRectF square =
      ThumbnailLayout(panelSize.width(), index + 1).picture(index).translated(0, titleBarHeight);
  return QRect(at(square.left(), square.top()), (square.size() * desktop.scale()).toSize());
}

QPoint Panel::copyButton(int index) const {
  const int inset = qRound(buttonInset * desktop.scale());
  return thumbnail(index).bottomRight() - QPoint(inset, inset);
}

QPoint Panel::lockButton() const {
  return at(panelSize.width() - 49, titleBarHeight / 2.0);
}

QPoint Panel::closeButton() const {
  return at(panelSize.width() - 23, titleBarHeight / 2.0);
}

bool Panel::hasToast() const {
  constexpr double belowText = 54 + 4;  // from the panel's foot: on the capsule, below its text
  const QColor seen(
      desktop.screen().picture().pixel(at(panelSize.width() / 2.0, panelSize.height() - belowText)));
  return seen == QColor(0x3B6B2F) || seen == QColor(0x6FAE4E);
}

void Panel::moveTo(QPoint point) const {
  desktop.input().moveTo(point.x(), point.y());
}

void Panel::click(QPoint point) const {
  moveTo(point);
  desktop.input().clickButton(1);
}

}  // namespace e2e
