#include "tests/e2e/Panel.h"

namespace e2e {
namespace {

// In points.
constexpr QSizeF panelSize(460, 500);
constexpr double titleBarHeight = 39;
constexpr double padding = 12;
constexpr double thumbnailSide = 138;
constexpr double columnPitch = 148;
constexpr double rowPitch = 166;

}  // namespace

Panel::Panel(Desktop& owner, Sorrel& program, double deviceScale)
    : desktop(owner), sorrel(program), scale(deviceScale) {
}

std::optional<QRect> Panel::window() const {
  const QSize least = (panelSize * scale).toSize();
  for (const ScreenWindow& each : desktop.screen().windows()) {
    if (each.className.contains(u"sorrel", Qt::CaseInsensitive) && each.area.width() >= least.width() &&
        each.area.height() >= least.height())
      return each.area;
  }
  return std::nullopt;
}

bool Panel::isOpen() const {
  return window().has_value();
}

QRect Panel::area() const {
  QRect panel(QPoint(), (panelSize * scale).toSize());
  panel.moveCenter(window().value().center());
  return panel;
}

void Panel::open() {
  const QRect icon = sorrel.statusItem();
  click(icon.center());
  until("the panel has come down", [&] { return isOpen() && area().top() > icon.bottom() + 2 * scale; });
  (void)desktop.screen().settledPicture();
}

void Panel::close() {
  click(sorrel.statusItem().center());
  until("the panel is closed", [this] { return !isOpen(); });
}

QPoint Panel::at(double x, double y) const {
  return area().topLeft() + QPoint(qRound(x * scale), qRound(y * scale));
}

QPoint Panel::thumbnail(int index) const {
  return at(padding + thumbnailSide / 2 + index % 3 * columnPitch,
            titleBarHeight + padding + thumbnailSide / 2 + index / 3 * rowPitch);
}

QPoint Panel::copyButton(int index) const {
  constexpr double fromMiddle = thumbnailSide / 2 - 14;
  return thumbnail(index) + QPoint(qRound(fromMiddle * scale), qRound(fromMiddle * scale));
}

QPoint Panel::lockButton() const {
  return at(panelSize.width() - 49, titleBarHeight / 2);
}

void Panel::moveTo(QPoint point) {
  desktop.input().moveTo(point.x(), point.y());
}

void Panel::click(QPoint point) {
  moveTo(point);
  desktop.input().clickButton(1);
}

}  // namespace e2e
