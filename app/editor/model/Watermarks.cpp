#include "app/editor/model/Watermarks.h"

#include "app/editor/model/EditorModel.h"
#include "app/settings/SettingsKeys.h"
#include "platform/imaging/drawing/DrawingSurface.h"

namespace sorrel {

TextWatermark TextWatermark::initial(const QSizeF& displaySize) {
  TextWatermark watermark;
  watermark.center = {displaySize.width() * 0.5, displaySize.height() * 0.85};
  return watermark;
}

bool TextWatermark::isBlank() const {
  return text.trimmed().isEmpty();
}

platform::TextStyle TextWatermark::style(double factor) const {
  const double fontSize = factor * (scale * 30.0);
  const QColor colour = QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
  const platform::TextShadow shadow{QColor::fromRgbF(0, 0, 0, 0.55F), fontSize * 0.1, {0, fontSize * 0.04}};
  return {
      .font = platform::UserDefaults::standard().value(SettingsKeys::watermarkFontFamily),
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
  const auto& logo = logoWM.get();
  if (!logo || logo->image.width() <= 0)
    return {0, 0};
  const double width = logo->scale * (displaySize->width() * 0.25);
  return {width, width * (double(logo->image.height()) / logo->image.width())};
}

void EditorModel::maybeTriggerBurst(const QString& text) {
  // Composed: a Hangul syllable may also be typed as its single letters.
  const QString trimmed = text.trimmed().normalized(QString::NormalizationForm_C);
  if (trimmed.toLower() == QStringLiteral("sorrel") || trimmed == QStringLiteral("소렐"))
    sorrelBurstID = QUuid::createUuid();
}

void EditorModel::drawLogoWatermark(platform::DrawingSurface& surface, double scale) const {
  if (!logoWM.get())
    return;
  const QSizeF size = logoDisplaySize() * scale;
  QRectF rectangle({0, 0}, size);
  rectangle.moveCenter(inOutput(logoWM.get()->center, scale));
  surface.draw(logoWM.get()->image, rectangle, logoWM.get()->opacity);
}

void EditorModel::drawTextWatermark(platform::DrawingSurface& surface, double scale) const {
  if (textWM->isBlank())
    return;
  const platform::TextBlock block(textWM->text, textWM->style(scale));
  const QSizeF size = block.size();
  surface.draw(block, inOutput(textWM->center, scale) - QPointF(size.width() * 0.5, size.height() * 0.5));
}

}  // namespace sorrel
