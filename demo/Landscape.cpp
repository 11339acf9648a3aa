#include "demo/Landscape.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace demo::scenery {
namespace {

/// A shape from a wavy line down to the picture's lower edge.
QPainterPath ridge(QSize size, const Hill& hill) {
  QPainterPath path;
  path.moveTo(0, size.height());
  for (int x = 0; x <= size.width(); x += 2) {
    const double angle = hill.phase + hill.waves * 2 * M_PI * x / size.width();
    const double wave = std::sin(angle) + 0.35 * std::sin(2.3 * angle + 1);
    path.lineTo(x, size.height() * (hill.height + hill.amplitude * wave));
  }
  path.lineTo(size.width(), size.height());
  return path;
}

void fillVertically(QPainter& painter, const QPainterPath& shape, const QColor& top, const QColor& foot) {
  const QRectF bounds = shape.boundingRect();
  QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
  gradient.setColorAt(0, top);
  gradient.setColorAt(1, foot);
  painter.fillPath(shape, gradient);
}

void drawSun(QPainter& painter, QPointF centre, double radius) {
  QRadialGradient glow(centre, radius * 4);
  glow.setColorAt(0, QColor(255, 244, 214, 190));
  glow.setColorAt(1, QColor(255, 244, 214, 0));
  painter.setPen(Qt::NoPen);
  painter.setBrush(glow);
  painter.drawEllipse(centre, radius * 4, radius * 4);
  painter.setBrush(QColor(0xFFF6DE));
  painter.drawEllipse(centre, radius, radius);
}

void drawLake(QImage& picture, const Landscape& view) {
  const QSize size = picture.size();
  const int shore = static_cast<int>(size.height() * view.shore);
  const QImage above = picture.copy(0, 2 * shore - size.height(), size.width(), size.height() - shore);
  QPainter painter(&picture);
  painter.drawImage(0, shore, above.mirrored());
  painter.fillRect(0, shore, size.width(), size.height() - shore, QColor(0x2B, 0x2E, 0x55, 90));
  painter.setPen(QPen(QColor(255, 226, 180, 60), 1));
  for (int y = shore + 6; y < size.height(); y += 7) {
    const double reach = 18 + (y - shore) * 0.4;
    painter.drawLine(QPointF(size.width() * view.sun.x() - reach, y + 0.5),
                     QPointF(size.width() * view.sun.x() + reach, y + 0.5));
  }
}

}  // namespace

Landscape landscapeOf(int number) {
  switch (number % 5) {
    case 0:  // the sea at noon
      return {QColor(0x3E8FD0),
              QColor(0xDDF0F6),
              {0.7, 0.2},
              0.05,
              {{0.56, 0.001, 1, 0, QColor(0x1E7FA8), QColor(0x5FC1C4)},
               {0.86, 0.02, 0.6, 2.0, QColor(0xF3E2B8), QColor(0xDDBE83)}}};
    case 1:  // snow
      return {QColor(0x5C86B8),
              QColor(0xF6E9E4),
              {},
              0,
              {{0.42, 0.12, 1.7, 0.8, QColor(0xFFFFFF), QColor(0xB9CBE0)},
               {0.62, 0.07, 1.3, 2.9, QColor(0xEDF3FA), QColor(0x9FB6D2)},
               {0.84, 0.04, 2.2, 4.0, QColor(0x3F5F58), QColor(0x22403C)}}};
    case 2:  // woods in mist
      return {QColor(0xCBD8D0),
              QColor(0xF3F1E4),
              {},
              0,
              {{0.40, 0.05, 5.1, 0.2, QColor(0xA9C0B0), QColor(0xD7E2D5)},
               {0.55, 0.06, 6.3, 2.0, QColor(0x7C9C84), QColor(0xBFD0BE)},
               {0.70, 0.06, 7.9, 4.1, QColor(0x4B7256), QColor(0x8FAE91)},
               {0.86, 0.05, 9.3, 1.0, QColor(0x1F4630), QColor(0x2F5C41)}}};
    case 3:  // a lake at dusk
      return {QColor(0x2B2F66),
              QColor(0xF08A5D),
              {0.62, 0.46},
              0.06,
              {{0.52, 0.08, 1.5, 1.2, QColor(0x5A3F72), QColor(0xA85F6F)}},
              0.66};
    default:  // a field of rape
      return {QColor(0x7DB9E8),
              QColor(0xEAF6FC),
              {},
              0,
              {{0.55, 0.03, 1.3, 3.0, QColor(0x5B8C5A), QColor(0x7FAE6A)},
               {0.68, 0.02, 0.8, 1.0, QColor(0xF2CB3D), QColor(0xE0A91B)}}};
  }
}

QImage landscape(QSize size, const Landscape& view) {
  QImage picture(size, QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath sky;
  sky.addRect(QRectF(QPointF(), size));
  fillVertically(painter, sky, view.skyTop, view.skyFoot);
  if (view.sunRadius > 0)
    drawSun(painter, {size.width() * view.sun.x(), size.height() * view.sun.y()},
            size.height() * view.sunRadius);
  for (const Hill& hill : view.hills)
    fillVertically(painter, ridge(size, hill), hill.top, hill.foot);
  painter.end();
  if (view.shore < 1)
    drawLake(picture, view);
  return picture;
}

}  // namespace demo::scenery
