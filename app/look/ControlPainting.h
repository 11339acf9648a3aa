#pragma once

#include "platform/desktop/Appearance.h"

#include <QRectF>

class QPainter;
class QPalette;
class QStyleOption;

namespace sorrel {

// What the controls' looks have in common.

inline constexpr double controlRadius = 6;

/// Colours as a control shows them: of its own palette's appearance, so that one in a window that is always
/// dark is dark too, and pale where it can't be used.
class ControlColors {
 public:
  explicit ControlColors(const QStyleOption& option);
  ControlColors(const QPalette& palette, bool isEnabled);

  [[nodiscard]] QColor operator()(const platform::Color& color) const;
  /// The accent, a step stronger under the pointer and another one while pressed.
  [[nodiscard]] QColor accent(bool isHovered, bool isPressed) const;
  /// What a control without an accent lies on, by the same steps.
  [[nodiscard]] QColor ground(bool isHovered, bool isPressed) const;

 private:
  const platform::Appearance appearance;
  const bool isEnabled;
};

/// Whether the control has the keyboard and its user goes by the keyboard: one who clicks needs no ring.
[[nodiscard]] bool showsKeyboardFocus(const QStyleOption& option);

/// `area` with its edges on whole device pixels, so that it is sharp at broken ratios too.
[[nodiscard]] QRectF onWholePixels(const QPainter& painter, const QRectF& area);
/// As wide as a line of one point comes in whole device pixels.
[[nodiscard]] double hairline(const QPainter& painter);
/// Fills a rounded rectangle without a line around it.
void fillRounded(QPainter& painter, const QRectF& area, double radius, const QColor& color);
/// Draws a line along the inside of a rounded rectangle's edge.
void strokeRounded(QPainter& painter, const QRectF& area, double radius, const QColor& color, double width);
/// An arrow head in the middle of `area`, pointing to the right and then turned by so many degrees.
void drawArrowHead(QPainter& painter, const QRectF& area, double turn, const QColor& color);

}  // namespace sorrel
