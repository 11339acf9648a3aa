// Draws the texts of the capture tool, which has neither fonts nor string tables at hand, and writes them as
// C++:
//
//   bake_texts EN.ts KO.ts OUT.cpp

#include <QFile>
#include <QFontInfo>
#include <QGuiApplication>
#include <QImage>
#include <QMap>
#include <QPainter>
#include <QTextStream>
#include <QXmlStreamReader>

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr double scales[] = {1, 1.25, 1.5, 2, 4};

// Lengths at the scale 1.
constexpr double digitSize = 13, digitHeight = 18, digitSpace = 0.4;
constexpr double textSize = 12.5, keySize = 11, keyPadding = 6, keyRadius = 4.5, keyTextGap = 7,
                 groupGap = 20;
constexpr double hintHeight = 20;
constexpr int keyEdgeAlpha = 110, keyGroundAlpha = 36, textAlpha = 235;

[[noreturn]] void fail(const QString& reason) {
  std::fprintf(stderr, "bake_texts: %s\n", qPrintable(reason));
  std::exit(1);
}

QFont font(const QString& family, double pixels) {
  QFont made(family);
  constexpr double pointsPerPixel = 72.0 / 96;
  made.setPointSizeF(pixels * pointsPerPixel);  // unlike pixels, points may be broken
  made.setHintingPreference(QFont::PreferVerticalHinting);
  made.setStyleStrategy(QFont::NoSubpixelAntialias);
  if (QFontInfo(made).family() != family)
    fail(u"the font %1 is missing"_s.arg(family));
  return made;
}

QImage blank(double width, double height) {
  QImage image(static_cast<int>(std::ceil(width)), static_cast<int>(std::lround(height)),
               QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

/// So that capital letters and digits stand in the middle of the height.
double baseline(const QFont& used, double height) {
  return std::round((height + QFontMetricsF(used).capHeight()) / 2);
}

/// Side by side, each in a cell of its own, `space` wider than a digit.
QImage drawCharacters(const QString& characters, const QFont& used, double space, double scale) {
  const QFontMetricsF metrics(used);
  const double cell = std::round(metrics.horizontalAdvance(u'0') + space);
  QImage image = blank(cell * static_cast<double>(characters.size()), digitHeight * scale);
  QPainter painter(&image);
  painter.setFont(used);
  painter.setPen(Qt::white);
  for (qsizetype i = 0; i < characters.size(); ++i) {
    const double spare = cell - metrics.horizontalAdvance(characters[i]);
    painter.drawText(QPointF(static_cast<double>(i) * cell + spare / 2, baseline(used, image.height())),
                     characters.sliced(i, 1));
  }
  return image;
}

struct KeyHint {
  QString key;
  QString text;
};

QImage drawHint(const std::vector<KeyHint>& hints, const QString& family, double scale) {
  const QFont keys = font(u"DejaVu Sans"_s, keySize * scale), texts = font(family, textSize * scale);
  const auto widthOf = [](const QFont& used, const QString& text) {
    return std::ceil(QFontMetricsF(used).horizontalAdvance(text));
  };
  const double line = std::round(scale), gap = std::round(keyTextGap * scale),
               group = std::round(groupGap * scale);
  const double padding = std::round(keyPadding * scale);
  double width = -group;
  for (const KeyHint& hint : hints)
    width += widthOf(keys, hint.key) + 2 * padding + gap + widthOf(texts, hint.text) + group;
  QImage image = blank(width, hintHeight * scale);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  double x = 0;
  for (const KeyHint& hint : hints) {
    const double keyWidth = widthOf(keys, hint.key) + 2 * padding;
    const QRectF cap(x + line / 2, line / 2, keyWidth - line, image.height() - line);
    painter.setPen(QPen(QColor(255, 255, 255, keyEdgeAlpha), line));
    painter.setBrush(QColor(255, 255, 255, keyGroundAlpha));
    painter.drawRoundedRect(cap, keyRadius * scale, keyRadius * scale);
    painter.setPen(QColor(255, 255, 255, textAlpha));
    painter.setFont(keys);
    painter.drawText(QPointF(x + padding, baseline(keys, image.height())), hint.key);
    x += keyWidth + gap;
    painter.setFont(texts);
    painter.drawText(QPointF(x, baseline(texts, image.height())), hint.text);
    x += widthOf(texts, hint.text) + group;
  }
  return image;
}

QMap<QString, QString> readTable(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    fail(u"%1 can't be read"_s.arg(path));
  QMap<QString, QString> texts;
  QString key;
  QXmlStreamReader xml(&file);
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement)
      continue;
    if (xml.name() == u"message"_s)
      key = xml.attributes().value(u"id"_s).toString();
    else if (xml.name() == u"translation"_s)
      texts.insert(key, xml.readElementText());
  }
  return texts;
}

QString textOf(const QString& table, const QString& key) {
  const auto texts = readTable(table);
  if (!texts.contains(key))
    fail(u"%1 has no %2"_s.arg(table, key));
  return texts.value(key);
}

std::vector<KeyHint> hintsOf(const QString& table) {
  const auto text = [&](const QString& key) { return textOf(table, key); };
  // The keys' names are those that are printed on them everywhere.
  return {{u"Space"_s, text(u"selection.hint.space"_s)}, {u"Esc"_s, text(u"selection.hint.escape"_s)}};
}

class Output {
 public:
  explicit Output(const QString& path) : file(path), stream(&file) {
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
      fail(u"%1 can't be written"_s.arg(path));
    stream << "#include \"tools/screencapture/selection/Sentences.h\"\n\nnamespace screencapture "
              "{\n\nnamespace {\n\n";
  }

  void add(const char* text, double scale, const QImage& image) {
    const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
    stream << "constexpr std::uint8_t text" << count << "[] = {";
    int clear = 0;
    const auto flush = [&] {
      if (clear > 0)
        stream << "0," << std::exchange(clear, 0) << ',';
    };
    for (int y = 0; y < alpha.height(); ++y) {
      for (int x = 0; x < alpha.width(); ++x) {
        const int value = alpha.constScanLine(y)[x];
        if (value != 0) {
          flush();
          stream << value << ',';
        } else if (++clear == 255) {
          flush();
        }
      }
    }
    flush();
    stream << "};\n";
    entries += u"  {Text::%1, %2, {%3, %4}, text%5},\n"_s.arg(QString::fromLatin1(text))
                   .arg(scale)
                   .arg(alpha.width())
                   .arg(alpha.height())
                   .arg(count++);
  }

  void addSentence(const char* name, const char* language, const QString& text) {
    sentences += u"  {Sentence::%1, Language::%2, R\"(%3)\"},\n"_s.arg(QString::fromLatin1(name),
                                                                       QString::fromLatin1(language), text);
  }

  void finish() {
    stream << "\nconstexpr BakedText all[] = {\n"
           << entries << "};\n\nconstexpr BakedSentence allSentences[] = {\n"
           << sentences
           << "};\n\n}  // namespace\n\nconst std::span<const BakedText> bakedTexts(all);\n"
              "const std::span<const BakedSentence> bakedSentences(allSentences);\n\n}  // namespace "
              "screencapture\n";
  }

 private:
  QFile file;
  QTextStream stream;
  QString entries;
  QString sentences;
  int count = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 4)
    fail(u"usage: bake_texts EN.ts KO.ts OUT.cpp"_s);
  Output output(arguments[3]);
  for (const double scale : scales) {
    const QFont used = font(u"DejaVu Sans"_s, digitSize * scale);
    output.add("Digits", scale, drawCharacters(u"0123456789\u00D7"_s, used, digitSpace * scale, scale));
  }
  for (const double scale : scales) {
    const QFont used = font(u"DejaVu Sans Mono"_s, digitSize * scale);
    output.add("HexDigits", scale, drawCharacters(u"0123456789ABCDEF#"_s, used, 0, scale));
  }
  for (const double scale : scales)
    output.add("EnglishHint", scale, drawHint(hintsOf(arguments[1]), u"DejaVu Sans"_s, scale));
  for (const double scale : scales)
    output.add("KoreanHint", scale, drawHint(hintsOf(arguments[2]), u"NanumGothic"_s, scale));
  const auto escapeOf = [&](int table) { return std::vector{hintsOf(arguments[table]).back()}; };
  for (const double scale : scales)
    output.add("EnglishEscapeHint", scale, drawHint(escapeOf(1), u"DejaVu Sans"_s, scale));
  for (const double scale : scales)
    output.add("KoreanEscapeHint", scale, drawHint(escapeOf(2), u"NanumGothic"_s, scale));
  for (const auto& [language, table] :
       {std::pair("English", arguments[1]), std::pair("Korean", arguments[2])}) {
    output.addSentence("RefusalTitle", language, textOf(table, u"selection.refusal.title"_s));
    output.addSentence("RefusalAdvice", language, textOf(table, u"selection.refusal.advice"_s));
  }
  output.finish();
  return 0;
}
