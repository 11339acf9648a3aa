#include "app/look/SliderControls.h"

#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace sorrel::SliderControls {
namespace {

constexpr int grooveThickness = 4;
constexpr int scrollBarInset = 3;
constexpr int shortestHandle = 28;

bool isHorizontal(const QStyleOptionSlider& slider) {
  return slider.orientation == Qt::Horizontal;
}

int handleOffset(const QStyleOptionSlider& slider, int room) {
  return QStyle::sliderPositionFromValue(slider.minimum, slider.maximum, slider.sliderPosition, room,
                                         slider.upsideDown);
}

}  // namespace

QRect sliderGroove(const QStyleOptionSlider& slider) {
  const QRect& all = slider.rect;
  if (isHorizontal(slider))
    return {all.left(), all.top() + (all.height() - grooveThickness) / 2, all.width(), grooveThickness};
  return {all.left() + (all.width() - grooveThickness) / 2, all.top(), grooveThickness, all.height()};
}

QRect sliderHandle(const QStyleOptionSlider& slider) {
  const QRect& all = slider.rect;
  QRect handle(0, 0, handleSide, handleSide);
  handle.moveCenter(all.center());
  if (isHorizontal(slider))
    handle.moveLeft(all.left() + handleOffset(slider, all.width() - handleSide));
  else
    handle.moveTop(all.top() + handleOffset(slider, all.height() - handleSide));
  return handle;
}

void paintSlider(QPainter& painter, const QStyleOptionSlider& slider) {
  const ControlColors colors(slider);
  const bool isPressed =
      slider.state.testFlag(QStyle::State_Sunken) && slider.activeSubControls == QStyle::SC_SliderHandle;
  const bool isHovered =
      slider.state.testFlag(QStyle::State_MouseOver) && slider.state.testFlag(QStyle::State_Enabled);
  const QRectF groove = onWholePixels(painter, sliderGroove(slider)), handle(sliderHandle(slider));
  // The part that is gone through ends below the handle.
  QRectF gone = groove;
  if (!isHorizontal(slider))
    slider.upsideDown ? gone.setTop(handle.center().y()) : gone.setBottom(handle.center().y());
  else
    slider.upsideDown ? gone.setLeft(handle.center().x()) : gone.setRight(handle.center().x());
  constexpr double radius = grooveThickness / 2.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  fillRounded(painter, groove, radius, colors(LookColors::trough));
  fillRounded(painter, gone, radius, colors(AppColors::accent));
  constexpr double inside = 1;
  const QRectF knob = handle.adjusted(inside, inside, -inside, -inside);
  const double knobRadius = knob.width() / 2;
  if (slider.state.testFlag(QStyle::State_Enabled))
    fillRounded(painter, knob.adjusted(-0.5, 0, 0.5, 1), knobRadius + 0.5, QColor(0, 0, 0, 46));
  QColor fill = LookColors::knob.resolved(platform::appearanceOf(slider.palette));
  if (!slider.state.testFlag(QStyle::State_Enabled))
    fill = fill.darker(150);  // opaque, so that the groove doesn't show through
  else if (isPressed)
    fill = fill.darker(118);
  else if (isHovered)
    fill = fill.darker(106);
  fillRounded(painter, knob, knobRadius, fill);
  if (showsKeyboardFocus(slider))
    drawFocusRing(painter, handle.adjusted(-1, -1, 1, 1), colors(AppColors::accent), handleSide / 2.0 + 1);
  painter.restore();
}

QRect scrollBarHandle(const QStyleOptionSlider& bar) {
  const int way = isHorizontal(bar) ? bar.rect.width() : bar.rect.height();
  const qint64 all = qint64(bar.maximum) - bar.minimum + bar.pageStep;
  int length = way;
  if (bar.maximum > bar.minimum && all > 0)
    length = std::min(way, std::max(shortestHandle, int(qint64(bar.pageStep) * way / all)));
  const int offset = handleOffset(bar, way - length);
  if (isHorizontal(bar))
    return {bar.rect.left() + offset, bar.rect.top(), length, bar.rect.height()};
  return {bar.rect.left(), bar.rect.top() + offset, bar.rect.width(), length};
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar) {
  if (bar.maximum <= bar.minimum)
    return;
  const bool isPressed =
      bar.state.testFlag(QStyle::State_Sunken) && bar.activeSubControls == QStyle::SC_ScrollBarSlider;
  QColor color = ControlColors(bar)(LookColors::label);
  color.setAlpha(isPressed ? 130 : bar.state.testFlag(QStyle::State_MouseOver) ? 100 : 64);
  const QRectF handle =
      QRectF(scrollBarHandle(bar)).adjusted(scrollBarInset, scrollBarInset, -scrollBarInset, -scrollBarInset);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = std::min(handle.width(), handle.height()) / 2;
  QColor rim =
      color.lightness() > 127 ? Qt::black : Qt::white;  // it may float over a picture of its own color
  rim.setAlpha(color.alpha());
  fillRounded(painter, handle.adjusted(-1, -1, 1, 1), radius + 1, rim);
  fillRounded(painter, handle, radius, color);
  painter.restore();
}

}  // namespace sorrel::SliderControls
