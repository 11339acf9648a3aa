#include "demo/TourScenery.h"

#include "demo/Landscape.h"

#include <QPainter>

namespace demo::scenery {

QImage wallpaper(QSize size) {
  return landscape(size, {.skyTop = QColor(0x8FB4C4),
                          .skyFoot = QColor(0xF7DDB6),
                          .sun = {0.77, 0.24},
                          .sunRadius = 0.05,
                          .hills = {{0.56, 0.040, 1.4, 0.3, QColor(0xC9B79A), QColor(0xE7CFA6)},
                                    {0.66, 0.045, 1.1, 2.2, QColor(0xA9A87C), QColor(0xCDBE8E)},
                                    {0.76, 0.050, 0.9, 4.4, QColor(0x7E935F), QColor(0xA7AC74)},
                                    {0.88, 0.045, 1.2, 0.9, QColor(0x4F7445), QColor(0x33572F)}}});
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
  return landscape(size, {.skyTop = QColor(0x3E4A78),
                          .skyFoot = QColor(0xF2A65E),
                          .sun = {0.4, 0.5},
                          .sunRadius = 0.055,
                          .hills = {{0.55, 0.07, 2.1, 0.5, QColor(0x6B5378), QColor(0xB8766F)},
                                    {0.62, 0.06, 1.6, 3.4, QColor(0x43375C), QColor(0x6E4B62)}},
                          .shore = 0.7});
}

}  // namespace demo::scenery
