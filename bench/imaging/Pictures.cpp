#include "bench/imaging/Pictures.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace bench {
namespace {

void drawWindow(QPainter& painter, const QRect& frame, int number, std::mt19937& random) {
  painter.setPen(Qt::NoPen);
  for (int reach = 24; reach > 0; --reach) {
    painter.setBrush(QColor(0, 0, 0, 3));
    painter.drawRoundedRect(frame.adjusted(-reach, -reach / 2, reach, reach), 12, 12);
  }
  const bool dark = number % 3 == 2;
  painter.setBrush(dark ? QColor(30, 32, 38) : QColor(252, 252, 253));
  painter.drawRoundedRect(frame, 12, 12);
  painter.setBrush(dark ? QColor(44, 46, 54) : QColor(232, 233, 237));
  painter.drawRoundedRect(QRect(frame.topLeft(), QSize(frame.width(), 52)), 12, 12);
  const QRect page = frame.adjusted(28, 72, -28, -20);
  painter.setClipRect(page);
  const std::array<QColor, 4> inks{dark ? QColor(220, 222, 228) : QColor(28, 30, 36), QColor(38, 108, 222),
                                   QColor(200, 64, 70), QColor(120, 126, 138)};
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(number % 2 == 0 ? 26 : 21);
  painter.setFont(font);
  const int lineHeight = painter.fontMetrics().height();
  for (int y = page.top() + lineHeight; y < page.bottom(); y += lineHeight) {
    int x = page.left() + static_cast<int>(random() % 4) * 24;
    for (auto words = random() % 14; words > 0; --words) {
      QString word;
      for (auto letters = 2 + random() % 9; letters > 0; --letters)
        word += QChar(static_cast<char16_t>(u'a' + random() % 26));
      painter.setPen(inks[random() % 8 == 0 ? 1 + random() % 3 : 0]);
      painter.drawText(x, y, word);
      x += painter.fontMetrics().horizontalAdvance(word + u' ');
    }
  }
  painter.setClipping(false);
}

}  // namespace

QImage textAndWindows(QSize size) {
  std::mt19937 random(1);
  QImage image(size, QImage::Format_RGBA8888_Premultiplied);
  image.fill(QColor(58, 92, 138));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  for (int number = 0; number < 6; ++number) {
    const QPoint corner(size.width() * (number % 3) * 3 / 10 + 40,
                        size.height() * (number / 3) * 4 / 10 + 60);
    drawWindow(painter, QRect(corner, size * 45 / 100), number, random);
  }
  painter.end();
  return image;
}

QImage photo(QSize size) {
  std::mt19937 random(2);
  QImage sum(size, QImage::Format_RGBA8888_Premultiplied);
  sum.fill(Qt::black);
  QPainter painter(&sum);
  // Octaves of soft noise, each half as coarse and half as strong as the one before.
  double strength = 1;
  for (int cells = 4; cells <= size.width(); cells *= 2, strength *= 0.55) {
    QImage octave(cells, std::max(1, cells * size.height() / size.width()),
                  QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < octave.height(); ++y)
      for (int x = 0; x < cells; ++x)
        octave.setPixelColor(x, y,
                             QColor(static_cast<int>(random() % 256), static_cast<int>(random() % 256),
                                    static_cast<int>(random() % 256)));
    painter.setOpacity(strength);
    painter.drawImage(QPoint(), octave.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  painter.end();
  std::normal_distribution<double> noise(0, 1.5);
  for (int y = 0; y < size.height(); ++y) {
    uchar* pixel = sum.scanLine(y);
    for (uchar* const end = pixel + 4 * size.width(); pixel != end; pixel += 4)
      for (int channel = 0; channel < 3; ++channel)
        pixel[channel] =
            static_cast<uchar>(std::clamp(std::lround(pixel[channel] + noise(random)), 0L, 255L));
  }
  return sum;
}

}  // namespace bench
