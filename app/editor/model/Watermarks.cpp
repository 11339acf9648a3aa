#include "app/editor/model/Watermarks.h"

#include "app/editor/model/EditorModel.h"

namespace sorrel {

TextWatermark TextWatermark::initial(const QSizeF& displaySize) {
  TextWatermark watermark;
  watermark.center = {displaySize.width() * 0.5, displaySize.height() * 0.85};
  return watermark;
}

bool TextWatermark::isBlank() const {
  return text.trimmed().isEmpty();
}

platform::TextStyle TextWatermark::style(double factor, const QString& fontFamily) const {
  const double fontSize = factor * (scale * 30.0);
  const QColor colour = QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
  const platform::TextShadow shadow{QColor::fromRgbF(0, 0, 0, 0.55F), fontSize * 0.1, {0, fontSize * 0.04}};
  return {
      .font = fontFamily,
      .fontSize = fontSize,
      .tracking = factor * (tracking * scale),
      .lineSpacing = factor * (lineSpacing * scale),
      .alignment = alignment,
      .colour = colour,
      .shadow = shadow,
  };
}

void EditorModel::setLogo(const QImage& image) {
  logoWM = LogoWatermark{.image = image, .center = {displaySize->width() * 0.5, displaySize->height() * 0.6}};
}

QSizeF EditorModel::logoDisplaySize() const {
  return document().logoSize();
}

QRectF EditorModel::logoRect() const {
  return document().logoRect();
}

QRectF EditorModel::textRect() const {
  if (textWM->isBlank())
    return {};
  QRectF rectangle({0, 0}, textBlock().size());
  rectangle.moveCenter(textWM->center);
  return rectangle;
}

/// Laid out anew only when something else than its place has changed.
const platform::TextBlock& EditorModel::textBlock() const {
  const platform::TextStyle style = textWM->style(1, fontFamily());
  if (!laidOut || laidOut->text != textWM->text || laidOut->style != style)
    laidOut = LaidOutText{textWM->text, style, platform::TextBlock(textWM->text, style)};
  return laidOut->block;
}

void EditorModel::maybeTriggerBurst(const QString& text) {
  // Composed: a Hangul syllable may also be typed as its single letters.
  const QString trimmed = text.trimmed().normalized(QString::NormalizationForm_C);
  if (trimmed.toLower() == QStringLiteral("sorrel") || trimmed == QStringLiteral("소렐"))
    sorrelBurstID = QUuid::createUuid();
}

}  // namespace sorrel
