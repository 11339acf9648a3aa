#include "tests/e2e/Landscape.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace e2e::scenery {
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

}  // namespace e2e::scenery
