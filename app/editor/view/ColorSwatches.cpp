#include "app/editor/view/ColorSwatches.h"

#include "app/editor/view/OptionsSection.h"
#include "app/look/ChoiceButton.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppColors.h"

#include <QPainter>

#include <array>

namespace sorrel {
namespace {

struct PaletteColor {
  quint32 hex;
  const char* nameKey;
};

constexpr std::array paletteColors = {
    PaletteColor{0xE5484D, "editor.pen.color.red"},    PaletteColor{0xF2A33C, "editor.pen.color.orange"},
    PaletteColor{0xF5D90A, "editor.pen.color.yellow"}, PaletteColor{0x4CAF50, "editor.pen.color.green"},
    PaletteColor{0x2D7FF9, "editor.pen.color.blue"},   PaletteColor{0xFFFFFF, "editor.pen.color.white"},
    PaletteColor{0x111111, "editor.pen.color.black"},
};

constexpr int columns = 5;
constexpr int pitch = 30;
constexpr int rowPitch = 29;
constexpr int diameter = 20;
constexpr int side = 26;  // with its ring

class Swatch : public ChoiceButton {
 public:
  Swatch(quint32 hex, QWidget* parent) : ChoiceButton({side, side}, parent), color(colorFromHex(hex)) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF disc(0, 0, diameter, diameter);
    disc.moveCenter(QRectF(rect()).center());
    painter.setBrush(color);
    constexpr float chosen = 0.95F, hovered = 0.6F, plain = 0.25F;
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1,
                                         isChecked()   ? chosen
                                         : isHovered() ? hovered
                                                       : plain),
                        isChecked() ? 2.5 : 1));
    painter.drawEllipse(disc);
    if (hasFocus())
      drawFocusRing(painter, rect(), ControlColors(palette(), true)(AppColors::accent), side / 2.0);
  }

 private:
  const QColor color;
};

}  // namespace

ColorSwatches::ColorSwatches(EditorModel& shown, QWidget* parent)
    : QWidget(parent),
      model(shown),
      watch(shown, {&shown.colorHex}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  constexpr int rows = (int(paletteColors.size()) + columns - 1) / columns;
  setFixedHeight((rows - 1) * rowPitch + side);
  for (int i = 0; i < int(paletteColors.size()); ++i) {
    const quint32 hex = paletteColors[size_t(i)].hex;
    auto* const swatch = new Swatch(hex, this);
    constexpr int ring = (side - diameter) / 2;
    swatch->move(OptionsSection::overhang + 1 - ring + i % columns * pitch, i / columns * rowPitch);
    connect(swatch, &QAbstractButton::clicked, this, [this, hex] { model.colorHex = hex; });
    swatches.push_back(swatch);
  }
  refresh();
  showTexts();
}

bool ColorSwatches::isCustom(quint32 colorHex) {
  return std::none_of(paletteColors.begin(), paletteColors.end(),
                      [colorHex](const PaletteColor& color) { return color.hex == colorHex; });
}

void ColorSwatches::refresh() {
  for (size_t i = 0; i < swatches.size(); ++i)
    swatches[i]->setChosen(model.colorHex == paletteColors[i].hex);
}

void ColorSwatches::showTexts() {
  for (size_t i = 0; i < swatches.size(); ++i)
    swatches[i]->setHelp(localized(QString::fromLatin1(paletteColors[i].nameKey)));
}

}  // namespace sorrel
