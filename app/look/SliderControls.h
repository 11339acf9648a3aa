#pragma once

class QPainter;
class QRect;
class QRectF;
class QStyleOptionSlider;

/// Sliders and scroll bars, as the application's style draws them.
namespace sorrel::SliderControls {

inline constexpr int handleSide = 16;
inline constexpr int thickness = 20;       // of a slider, across its way
inline constexpr int scrollBarWidth = 12;  // across its way too

[[nodiscard]] QRect sliderGroove(const QStyleOptionSlider& slider);
[[nodiscard]] QRect sliderHandle(const QStyleOptionSlider& slider);
void paintSlider(QPainter& painter, const QStyleOptionSlider& slider);

/// A scroll bar is its handle alone: without a trough and without arrows.
[[nodiscard]] QRect scrollBarHandle(const QStyleOptionSlider& bar);
void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar);

}  // namespace sorrel::SliderControls
