#include "app/look/ControlPainting.h"

#include "app/look/LookColors.h"

#include <QPainter>
#include <QStyleOption>

#include <cmath>

namespace sorrel {
namespace {

constexpr float disabledOpacity = 0.4F;

QColor mixed(const QColor& color, const QColor& with, double share) {
  const auto part = [share](int one, int other) { return qRound(one + (other - one) * share); };
  return {part(color.red(), with.red()), part(color.green(), with.green()), part(color.blue(), with.blue()),
          color.alpha()};
}

}  // namespace

ControlColors::ControlColors(const QStyleOption& option)
    : ControlColors(option.palette, option.state.testFlag(QStyle::State_Enabled)) {
}

ControlColors::ControlColors(const QPalette& palette, bool enabled)
    : appearance(platform::appearanceOf(palette)), isEnabled(enabled) {
}

QColor ControlColors::operator()(const platform::Color& color) const {
  QColor resolved = color.resolved(appearance);
  if (!isEnabled)
    resolved.setAlphaF(resolved.alphaF() * disabledOpacity);
  return resolved;
}

QColor ControlColors::accent(bool isHovered, bool isPressed) const {
  constexpr double hoveredShare = 0.1, pressedShare = 0.22;
  return mixed((*this)(AppColors::accent), LookColors::label.resolved(appearance),
               isPressed   ? pressedShare
               : isHovered ? hoveredShare
                           : 0);
}

QColor ControlColors::ground(bool isHovered, bool isPressed) const {
  return (*this)(isPressed   ? LookColors::controlPressed
                 : isHovered ? LookColors::controlHovered
                             : LookColors::control);
}

bool showsKeyboardFocus(const QStyleOption& option) {
  return option.state.testFlag(QStyle::State_HasFocus) &&
         option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

QRectF onWholePixels(const QPainter& painter, const QRectF& area) {
  const QTransform toDevice = painter.deviceTransform();
  return toDevice.inverted().mapRect(QRectF(toDevice.mapRect(area).toRect()));
}

double hairline(const QPainter& painter) {
  const double ratio = painter.deviceTransform().m11();
  return std::max(1.0, std::floor(ratio)) / ratio;
}

void fillRounded(QPainter& painter, const QRectF& area, double radius, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(area, radius, radius);
}

void strokeRounded(QPainter& painter, const QRectF& area, double radius, const QColor& color, double width) {
  const double half = width / 2;
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(area.adjusted(half, half, -half, -half), radius - half, radius - half);
}

void drawArrowHead(QPainter& painter, const QRectF& area, double turn, const QColor& color) {
  painter.save();
  painter.translate(area.center());
  painter.rotate(turn);
  painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  constexpr double half = 2;
  const QPointF head[] = {{-half, -2 * half}, {half, 0}, {-half, 2 * half}};
  painter.drawPolyline(head, 3);
  painter.restore();
}

}  // namespace sorrel
