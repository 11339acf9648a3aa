#include "tests/e2e/TourScenery.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace e2e::scenery {
namespace {

struct Hill {
  double height;     // of its middle line, from the top, as a part of the picture's height
  double amplitude;  // likewise
  double waves;      // over the picture's width
  double phase;
  QColor top;
  QColor foot;
};

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

}  // namespace

QImage wallpaper(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath sky;
  sky.addRect(QRectF(QPointF(), size));
  fillVertically(painter, sky, QColor(0x8FB4C4), QColor(0xF7DDB6));
  drawSun(painter, {size.width() * 0.77, size.height() * 0.24}, size.height() * 0.05);
  const Hill hills[] = {
      {0.56, 0.040, 1.4, 0.3, QColor(0xC9B79A), QColor(0xE7CFA6)},
      {0.66, 0.045, 1.1, 2.2, QColor(0xA9A87C), QColor(0xCDBE8E)},
      {0.76, 0.050, 0.9, 4.4, QColor(0x7E935F), QColor(0xA7AC74)},
      {0.88, 0.045, 1.2, 0.9, QColor(0x4F7445), QColor(0x33572F)},
  };
  for (const Hill& hill : hills)
    fillVertically(painter, ridge(size, hill), hill.top, hill.foot);
  return picture;
}

QImage notes(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(QColor(0xFFFDF8));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr int margin = 32;
  const QColor ink(0x2E3440);
  const auto write = [&](int y, int points, int weight, const QColor& colour, const QString& text) {
    QFont font(QStringLiteral("sans-serif"), points);
    font.setWeight(QFont::Weight(weight));
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(margin, y, text);
  };
  write(58, 17, QFont::Bold, ink, QStringLiteral("A week in the garden"));
  write(84, 9, QFont::Normal, QColor(0x8A8F99), QStringLiteral("정원에서 보낸 일주일"));
  const QString lines[] = {QStringLiteral("The sorrel came up on Monday, before the lettuce."),
                           QStringLiteral("Thin it out, and keep the small leaves for soup."),
                           QStringLiteral("Rain on Thursday; the barrel is full again.")};
  int y = 122;
  for (const QString& line : lines) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x3B6B2F));
    painter.drawEllipse(QPointF(margin + 3, y - 5), 3, 3);
    painter.translate(16, 0);
    write(y, 10, QFont::Normal, ink, line);
    painter.translate(-16, 0);
    y += 28;
  }
  // Leaves picked each day.
  const double leaves[] = {0.35, 0.5, 0.42, 0.7, 0.62, 0.95, 0.8};
  const double foot = size.height() - 36.0;
  const double height = foot - y - 8;
  const double step = (size.width() - 2.0 * margin) / std::size(leaves);
  painter.setPen(Qt::NoPen);
  for (std::size_t i = 0; i < std::size(leaves); ++i) {
    painter.setBrush(i == 5 ? QColor(0xE9C046) : QColor(0x7E935F));
    const double left = margin + step * static_cast<double>(i) + 6;
    painter.drawRoundedRect(QRectF(left, foot - height * leaves[i], step - 12, height * leaves[i]), 4, 4);
  }
  painter.setPen(QColor(0xD8D3C8));
  painter.drawLine(QPointF(margin, foot + 0.5), QPointF(size.width() - margin, foot + 0.5));
  return picture;
}

QImage photograph(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath sky;
  sky.addRect(QRectF(QPointF(), size));
  fillVertically(painter, sky, QColor(0x3E4A78), QColor(0xF2A65E));
  drawSun(painter, {size.width() * 0.4, size.height() * 0.5}, size.height() * 0.055);
  const Hill far{0.55, 0.07, 2.1, 0.5, QColor(0x6B5378), QColor(0xB8766F)};
  const Hill near{0.62, 0.06, 1.6, 3.4, QColor(0x43375C), QColor(0x6E4B62)};
  fillVertically(painter, ridge(size, far), far.top, far.foot);
  fillVertically(painter, ridge(size, near), near.top, near.foot);
  // The lake mirrors what is above its shore.
  const int shore = size.height() * 7 / 10;
  const QImage above = picture.copy(0, 2 * shore - size.height(), size.width(), size.height() - shore);
  painter.drawImage(0, shore, above.mirrored());
  painter.fillRect(0, shore, size.width(), size.height() - shore, QColor(0x2B, 0x2E, 0x55, 90));
  painter.setPen(QPen(QColor(255, 226, 180, 60), 1));
  for (int y = shore + 6; y < size.height(); y += 7) {
    const double reach = 18 + (y - shore) * 0.4;
    painter.drawLine(QPointF(size.width() * 0.4 - reach, y + 0.5),
                     QPointF(size.width() * 0.4 + reach, y + 0.5));
  }
  return picture;
}

}  // namespace e2e::scenery
