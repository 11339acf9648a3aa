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
  click(sorrel.statusItem().center());
  waitUntilOpen();
}

void Panel::waitUntilOpen() {
  const int top = sorrel.statusItem().bottom();
  until("the panel has come down", [&] { return isOpen() && area().top() > top + 2 * scale; });
  (void)desktop.screen().settledPicture();
}

void Panel::close() {
  click(sorrel.statusItem().center());
  until("the panel is closed", [this] { return !isOpen(); });
}

bool Panel::hasToast() const {
  constexpr double belowText = 54 + 4;  // from the panel's foot: on the capsule, below its text
  const QColor seen(
      desktop.screen().picture().pixel(at(panelSize.width() / 2, panelSize.height() - belowText)));
  return seen == QColor(0x3B6B2F) || seen == QColor(0x6FAE4E);
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
