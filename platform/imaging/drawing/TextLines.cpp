#include "platform/imaging/drawing/TextLines.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <QTextLayout>

#include <algorithm>

namespace platform {
namespace {

QFont boldSystemFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  font.setBold(true);
  return font;
}

QString withoutSeparators(QString name) {
  name.remove(u' ').remove(u'-');
  return name.toLower();
}

/// The font of which `name` is the full name: a family and one of its styles.
std::optional<QFont> fontNamed(const QString& name) {
  const QString wanted = withoutSeparators(name);
  const QStringList families = QFontDatabase::families();
  for (const QString& family : families) {
    const QString plain = withoutSeparators(family);
    if (!wanted.startsWith(plain))
      continue;
    const QStringList styles = QFontDatabase::styles(family);
    for (const QString& style : styles)
      if (wanted == plain + withoutSeparators(style))
        return QFontDatabase::font(family, style, TextLines::fontSize);
  }
  return std::nullopt;
}

}  // namespace

QStringList TextLines::split(const QString& text) {
  static const QRegularExpression lineBreak(QStringLiteral("\\R"));
  return text.split(lineBreak);
}

QString TextLines::withPlainBreaks(const QString& text) {
  return split(text).join(u'\n');
}

QFont TextLines::font(const TextStyle& style) {
  QFont font;
  if (style.font.isEmpty())
    font = boldSystemFont();
  else if (QFontDatabase::hasFamily(style.font))
    font = QFont(style.font);
  else
    font = fontNamed(style.font).value_or(boldSystemFont());
  font.setPixelSize(fontSize);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setLetterSpacing(QFont::AbsoluteSpacing, style.tracking * fontSize / style.fontSize);
  return font;
}

void TextLines::layOut(QTextLayout& line) {
  QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setWrapMode(QTextOption::NoWrap);
  line.setTextOption(option);
  line.beginLayout();
  line.createLine().setLeadingIncluded(true);
  line.endLayout();
}

QSizeF TextLines::arrange(const std::vector<QTextLayout*>& lines, const TextStyle& style) {
  double width = 0;
  for (const QTextLayout* const line : lines)
    width = std::max(width, line->lineAt(0).naturalTextWidth());
  const double indent = style.alignment == TextAlignment::left     ? 0
                        : style.alignment == TextAlignment::centre ? 0.5
                                                                   : 1;
  const double spacing = style.lineSpacing * fontSize / style.fontSize;
  double top = 0;
  for (QTextLayout* const layout : lines) {
    QTextLine line = layout->lineAt(0);
    line.setPosition({0, 0});
    const QRectF natural = line.naturalTextRect();
    line.setPosition({indent * (width - natural.width()) - natural.left(), 0});
    layout->setPosition({0, top});
    top += line.height() + spacing;
  }
  return {width, std::max(0.0, top - spacing)};
}

}  // namespace platform
