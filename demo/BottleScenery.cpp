#include "demo/BottleScenery.h"

#include "demo/Landscape.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace demo::scenery {
namespace {

/// A picture being drawn, and the dice that make it one of its own.
class Canvas {
 public:
  Canvas(QSize size, QRgb background, int seed)
      : Canvas(
            [&] {
              QImage blank(size, QImage::Format_RGB32);
              blank.fill(background);
              return blank;
            }(),
            seed) {}
  Canvas(QImage start, int seed)
      : picture(std::move(start)), random(static_cast<unsigned>(seed)), painter(&picture) {
    painter.setRenderHint(QPainter::Antialiasing);
  }

  void box(const QRectF& area, const QColor& color, double radius = 0) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(area, radius, radius);
  }
  void disc(QPointF center, double radius, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(center, radius, radius);
  }
  void line(const QPainterPath& path, double width, const QColor& color) {
    painter.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }
  /// Writes from the baseline's left end; returns the text's width.
  double write(QPointF at, int size, const QColor& color, const QString& text,
               QFont::Weight weight = QFont::Normal, const QString& family = u"DejaVu Sans"_s) {
    QFont font(family);
    font.setPixelSize(size);
    font.setWeight(weight);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(at, text);
    return QFontMetricsF(font).horizontalAdvance(text);
  }
  /// From 0 to `count` - 1.
  int roll(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
  [[nodiscard]] int width() const { return picture.width(); }
  [[nodiscard]] int height() const { return picture.height(); }
  QPainter& brush() { return painter; }
  QImage finished() {
    painter.end();
    return picture;
  }

 private:
  QImage picture;
  std::mt19937 random;
  QPainter painter;
};

const QStringList words =
    u"the garden after rain we moved both pots nearer to window light and soon small leaves came out of dark "
    "soil before noon someone had left a note about the gate key"_s.split(u' ');

QString phrase(Canvas& canvas, int count) {
  QStringList chosen;
  for (int i = 0; i < count; ++i)
    chosen << words.at(canvas.roll(static_cast<int>(words.size())));
  chosen.first()[0] = chosen.first().at(0).toUpper();
  return chosen.join(u' ');
}

void paragraph(Canvas& canvas, QPointF at, int lines, int length, int size, const QColor& color) {
  for (int i = 0; i < lines; ++i)
    canvas.write(at + QPointF(0, i * size * 1.6), size, color,
                 phrase(canvas, i + 1 == lines ? length / 2 : length));
}

QImage codeEditor(int seed) {
  Canvas canvas({1120, 700}, 0x1F2430, seed);
  canvas.box({0, 0, 210, 700}, QColor(0x191D26));
  canvas.box({210, 0, 910, 40}, QColor(0x191D26));
  canvas.box({210, 0, 180, 40}, QColor(0x1F2430));
  canvas.write({232, 26}, 15, QColor(0xD9D7CE), u"beehive.cpp"_s);
  canvas.write({412, 26}, 15, QColor(0x707A8C), u"beehive.h"_s);
  for (int i = 0; i < 14; ++i)
    canvas.write({24.0 + 18 * (i % 4 > 0), 40.0 + 34 * i}, 15, QColor(i == 3 ? 0xFFCC66 : 0x8A9199),
                 words.at((seed * 7 + i * 3) % words.size()));
  const std::array colors{0xFFAD66, 0x73D0FF, 0xD5FF80, 0xCBCCC6, 0xD4BFFF};
  const QStringList tokens =
      u"const auto return if for while struct bees = queen.find(hive) (i < 12) + { } 42 count; drone *next "
      u"\"nectar\""_s.split(u' ');
  for (int row = 0, indent = 0; row < 22; ++row) {
    const double y = 72 + row * 29;
    canvas.write({228, y}, 17, QColor(0x4B5263), QString::number(row + 12 * seed % 90), QFont::Normal,
                 u"DejaVu Sans Mono"_s);
    indent = std::clamp(indent + canvas.roll(3) - 1, 0, 4);
    double x = 276 + indent * 36;
    for (int count = row % 6 == 5 ? 0 : 2 + canvas.roll(5); count > 0; --count)
      x += 10 + canvas.write({x, y}, 17, QColor(colors[static_cast<std::size_t>(canvas.roll(5))]),
                             tokens.at(canvas.roll(static_cast<int>(tokens.size()))), QFont::Normal,
                             u"DejaVu Sans Mono"_s);
  }
  return canvas.finished();
}

QImage terminal(int seed) {
  Canvas canvas({900, 560}, seed % 2 ? 0x0F1A17 : 0xFBF7EC, seed);
  const QColor ink(seed % 2 ? 0xC9D6CF : 0x4A4F45), prompt(seed % 2 ? 0x7FD08A : 0x2C7A3D);
  for (int row = 0; row < 18; ++row) {
    const double y = 38 + row * 29;
    const bool isCommand = row % 5 == 0;
    const double x = isCommand ? 24 + canvas.write({24, y}, 18, prompt, u"~/orchard $ "_s, QFont::Bold,
                                                   u"DejaVu Sans Mono"_s)
                               : 24;
    canvas.write({x, y}, 18, ink, phrase(canvas, isCommand ? 2 : 4 + canvas.roll(6)).toLower(), QFont::Normal,
                 u"DejaVu Sans Mono"_s);
  }
  return canvas.finished();
}

QImage mail(int seed) {
  Canvas canvas({1180, 740}, 0xFFFFFF, seed);
  canvas.box({0, 0, 190, 740}, QColor(0xEEF1F4));
  canvas.box({190, 0, 360, 740}, QColor(0xF8F9FA));
  canvas.box({16, 20, 158, 40}, QColor(0x2F6FDE), 8);
  canvas.write({46, 46}, 16, Qt::white, u"New letter"_s, QFont::Bold);
  for (int i = 0; i < 7; ++i)
    canvas.write({30, 104.0 + 38 * i}, 16, QColor(i ? 0x5B6670 : 0x1C2B3A),
                 words.at((seed + 5 * i) % words.size()));
  const std::array faces{0xE08E6D, 0x6DA9E0, 0x8BC27A, 0xC48BD0, 0xE0C26D};
  canvas.box({190, 96, 360, 92}, QColor(0xD9E7FD));
  for (int i = 0; i < 8; ++i) {
    const double y = 10 + 90.0 * i;
    canvas.disc({232, y + 38}, 22, QColor(faces[static_cast<std::size_t>((seed + i) % 5)]));
    canvas.write({268, y + 32}, 16, QColor(0x1C2B3A), phrase(canvas, 2), QFont::Bold);
    canvas.write({268, y + 58}, 15, QColor(0x7A858F), phrase(canvas, 5));
  }
  canvas.box({550, 0, 630, 740}, Qt::white);
  canvas.write({586, 70}, 28, QColor(0x1C2B3A), phrase(canvas, 4), QFont::Bold);
  paragraph(canvas, {586, 130}, 8, 11, 17, QColor(0x3A4650));
  const QImage enclosed =
      landscape({520, 280}, {QColor(0x77B7DA),
                             QColor(0xE8F3F3),
                             {},
                             0,
                             {{0.55, 0.1, 1.2, seed * 1.0, QColor(0x5F8F6B), QColor(0x8CB27F)}}});
  canvas.brush().drawImage(586, 380, enclosed);
  return canvas.finished();
}

QPainterPath curve(Canvas& canvas, const QRectF& area, int points) {
  QPainterPath path;
  double level = 0.3 + 0.1 * canvas.roll(4);
  QPointF last;
  for (int i = 0; i <= points; ++i) {
    level = std::clamp(level + (canvas.roll(100) - 44) / 320.0, 0.05, 0.95);
    const QPointF next(area.left() + area.width() * i / points, area.bottom() - area.height() * level);
    if (i == 0)
      path.moveTo(next);
    else
      path.cubicTo(QPointF((last.x() + next.x()) / 2, last.y()), QPointF((last.x() + next.x()) / 2, next.y()),
                   next);
    last = next;
  }
  return path;
}

QImage chart(int seed) {
  const bool isDark = seed % 2 == 0;
  Canvas canvas({1000, 640}, isDark ? 0x171B2B : 0xF4F5F8, seed);
  const QColor card(isDark ? 0x222842 : 0xFFFFFF), ink(isDark ? 0xF0F2FA : 0x20242C),
      faint(isDark ? 0x3A4266 : 0xE3E6EC);
  const std::array accents{QColor(0x4DB6AC), QColor(0xF2A541), QColor(0xE4576E)};
  for (int i = 0; i < 3; ++i) {
    canvas.box({28.0 + 320 * i, 28, 304, 118}, card, 12);
    canvas.write({52.0 + 320 * i, 66}, 16, QColor(0x8F97A8), words.at((3 * seed + i) % words.size()));
    canvas.write({52.0 + 320 * i, 118}, 38, ink, QString::number(canvas.roll(900) / 10.0 + 3, 'f', 1),
                 QFont::Bold);
    canvas.disc({302.0 + 320 * i, 60}, 9, accents[static_cast<std::size_t>(i)]);
  }
  canvas.box({28, 168, 944, 444}, card, 12);
  for (int i = 0; i < 5; ++i)
    canvas.box({60, 220.0 + 80 * i, 880, 2}, faint);
  const QRectF plot(60, 210, 880, 330);
  if (seed % 4 < 2) {
    for (int i = 0; i < 3; ++i) {
      const QPainterPath path = curve(canvas, plot, 12);
      QPainterPath below = path;
      below.lineTo(plot.right(), 540);
      below.lineTo(plot.left(), 540);
      QColor wash = accents[static_cast<std::size_t>(i)];
      wash.setAlpha(40);
      canvas.brush().fillPath(below, wash);
      canvas.line(path, 5, accents[static_cast<std::size_t>(i)]);
    }
  } else {
    for (int i = 0; i < 16; ++i) {
      const double height = 60 + canvas.roll(260);
      canvas.box({72.0 + 54 * i, 540 - height, 36, height},
                 accents[static_cast<std::size_t>(i % 5 == 2 ? 1 : 0)], 5);
    }
  }
  return canvas.finished();
}

QImage map(int seed) {
  Canvas canvas({1100, 760}, 0xF1EDE3, seed);
  QPainter& painter = canvas.brush();
  painter.translate(550, 380);
  painter.rotate(-18 + 23 * (seed % 4));
  painter.translate(-750, -750);
  for (int i = 0; i < 5; ++i)
    canvas.box({300.0 * i + 24, 150.0 * canvas.roll(9) + 20, 240, 120.0 + 150 * (i % 2)}, QColor(0xC9E4B4),
               10);
  for (int i = 0; i < 11; ++i) {
    for (const bool isAcross : {true, false}) {
      const bool isMain = i % 4 == 2;
      const double at = i * 150.0, width = isMain ? 26 : 13;
      canvas.box(isAcross ? QRectF(-100, at, 1700, width) : QRectF(at, -100, width, 1700),
                 QColor(isMain ? 0xFBD98B : 0xFFFFFF));
    }
  }
  QPainterPath river(QPointF(-100, 1000));
  river.cubicTo(400, 640, 700, 1300, 1600, 760);
  canvas.line(river, 96, QColor(0x9CC8E6));
  QPainterPath route(QPointF(450, 460));
  for (const QPointF& corner : {QPointF(756, 460), QPointF(756, 756), QPointF(1056, 756), QPointF(1056, 910)})
    route.lineTo(corner);
  canvas.line(route, 15, QColor(0x2F6FDE));
  painter.resetTransform();
  canvas.box({28, 28, 360, 60}, Qt::white, 12);
  canvas.write({52, 66}, 22, QColor(0x4A4F45), phrase(canvas, 3));
  QPainterPath pin(QPointF(620, 420));
  pin.cubicTo(560, 350, 566, 290, 620, 286);
  pin.cubicTo(674, 290, 680, 350, 620, 420);
  painter.fillPath(pin, QColor(0xD9403A));
  canvas.disc({620, 338}, 19, Qt::white);
  return canvas.finished();
}

QImage talk(int seed) {
  Canvas canvas({390, 844}, 0xF2F2F6, seed);
  canvas.box({0, 0, 390, 92}, QColor(0xFFFFFF));
  canvas.disc({46, 54}, 22, QColor(seed % 2 ? 0xE08E6D : 0x6DA9E0));
  canvas.write({82, 60}, 19, QColor(0x1C1C1E), seed % 2 ? u"민지"_s : u"Rowan"_s, QFont::Bold,
               u"NanumGothic"_s);
  double y = 116;
  for (int i = 0; y < 760; ++i) {
    const bool isMine = canvas.roll(2) == 0;
    const double width = 120 + canvas.roll(150), height = canvas.roll(3) == 0 ? 74 : 46;
    const double x = isMine ? 390 - 16 - width : 16;
    canvas.box({x, y, width, height}, isMine ? QColor(0x3B8F5A) : QColor(0xFFFFFF), 20);
    for (double line = 0; line + 40 < height + 8; line += 28)
      canvas.box({x + 18, y + 18 + line, (width - 36) * (line > 0 ? 0.6 : 1), 9},
                 isMine ? QColor(255, 255, 255, 210) : QColor(0xB9B9C2), 4);
    y += height + (canvas.roll(2) ? 10 : 24);
  }
  canvas.box({0, 776, 390, 68}, QColor(0xFFFFFF));
  canvas.box({16, 788, 358, 40}, QColor(0xEDEDF2), 20);
  return canvas.finished();
}

QImage waves(int seed) {
  Canvas canvas({1280, 200}, 0x20222B, seed);
  const QColor colors[] = {QColor(0x6FAE4E), QColor(0xF2A541), QColor(0x58A6FF)};
  for (int x = 12; x < 1268; x += 7) {
    const double swell = 0.35 + 0.65 * std::abs(std::sin(x * 0.006 + seed) * std::cos(x * 0.0023));
    const double height = std::max(6.0, swell * (30 + canvas.roll(130)));
    canvas.box({double(x), 100 - height / 2, 4, height}, x < 470 ? colors[seed % 3] : QColor(0x6B6F80), 2);
  }
  canvas.box({468, 10, 3, 180}, Qt::white);
  return canvas.finished();
}

QImage sheet(int seed) {
  Canvas canvas({1060, 680}, 0xFFFFFF, seed);
  canvas.box({0, 0, 1060, 56}, QColor(0x217346));
  canvas.write({24, 37}, 20, Qt::white, phrase(canvas, 3), QFont::Bold);
  for (int row = 0; row < 16; ++row) {
    const double y = 56 + row * 40;
    canvas.box({0, y, 1060, 40}, QColor(row == 0 ? 0xDDEBE2 : row % 2 ? 0xFFFFFF : 0xF6F9F7));
    for (int column = 0; column < 7; ++column) {
      const bool isMarked = row > 0 && column == 4 && canvas.roll(3) == 0;
      if (isMarked)
        canvas.box({150.0 * column + 4, y + 4, 142, 32}, QColor(0xFFE3A3));
      canvas.write({150.0 * column + 16, y + 27}, 17, QColor(0x2F3A34),
                   row == 0 || column == 0 ? words.at((seed + row * 3 + column * 5) % words.size())
                                           : QString::number(canvas.roll(90000) / 100.0, 'f', 2),
                   row == 0 ? QFont::Bold : QFont::Normal);
    }
    canvas.box({0, y + 39, 1060, 1}, QColor(0xD5DDD8));
  }
  return canvas.finished();
}

QImage dialog(int seed) {
  Canvas canvas({560, 250}, seed % 2 ? 0xFAFAFA : 0x2D2D30, seed);
  const QColor ink(seed % 2 ? 0x222222 : 0xF0F0F0);
  canvas.disc({64, 78}, 30, QColor(seed % 3 ? 0xE5A50A : 0x3584E4));
  canvas.write({57, 92}, 38, Qt::white, seed % 3 ? u"!"_s : u"?"_s, QFont::Bold);
  canvas.write({122, 66}, 22, ink, phrase(canvas, 4), QFont::Bold);
  paragraph(canvas, {122, 102}, 2, 7, 17, ink);
  canvas.box({282, 182, 118, 44}, QColor(seed % 2 ? 0xE1E1E1 : 0x47474B), 8);
  canvas.write({312, 210}, 17, ink, u"Later"_s);
  canvas.box({416, 182, 118, 44}, QColor(0x3584E4), 8);
  canvas.write({446, 210}, 17, Qt::white, u"Repot"_s);
  return canvas.finished();
}

QImage calendar(int seed) {
  Canvas canvas({940, 680}, 0xFFFFFF, seed);
  canvas.write({30, 58}, 32, QColor(0x222222), u"2026"_s, QFont::Bold);
  const std::array colors{0xD7E8CD, 0xFFE0B8, 0xCFE2FB, 0xF6CFD6};
  for (int day = 0; day < 35; ++day) {
    const QRectF area(10 + 132.0 * (day % 7), 90 + 116.0 * (day / 7), 128, 112);
    canvas.box(area, QColor(day % 7 == 0 ? 0xFAF3F3 : 0xF7F8FA), 6);
    canvas.write(area.topLeft() + QPointF(10, 26), 17, QColor(day % 7 ? 0x55595F : 0xC0392B),
                 QString::number(day % 31 + 1));
    for (int i = canvas.roll(3); i > 0; --i)
      canvas.box({area.left() + 6, area.top() + 10 + 29.0 * i, 116, 24},
                 QColor(colors[static_cast<std::size_t>(canvas.roll(4))]), 5);
  }
  canvas.disc({10 + 132.0 * 3 + 19, 90 + 116.0 * 2 + 20}, 17, QColor(0xD9403A));
  return canvas.finished();
}

QImage photograph(int seed) {
  return landscape(seed % 3 == 2 ? QSize(640, 900) : QSize(1080, 720), landscapeOf(seed));
}

QImage article(int seed) {
  Canvas canvas({860, 1000}, 0xFFFEFA, seed);
  canvas.brush().drawImage(0, 0, landscape({860, 380}, landscapeOf(seed + 1)));
  canvas.write({70, 460}, 40, QColor(0x201D18), phrase(canvas, 4), QFont::Bold);
  canvas.write({70, 504}, 18, QColor(0x9A8F7D), phrase(canvas, 5));
  paragraph(canvas, {70, 566}, 13, 13, 20, QColor(0x4A453C));
  return canvas.finished();
}

}  // namespace

QImage screenshot(int number) {
  constexpr std::array kinds{photograph, codeEditor, map,    article,    chart,    talk, mail,
                             waves,      calendar,   dialog, photograph, terminal, sheet};
  const auto count = static_cast<int>(kinds.size());
  return kinds[static_cast<std::size_t>(number % count)](number / count * 3 + number % count);
}

}  // namespace demo::scenery
