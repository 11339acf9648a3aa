#include "app/editor/view/BlurSection.h"

#include "app/editor/view/SliderRow.h"
#include "app/look/SegmentedPicker.h"
#include "app/settings/LocalizationManager.h"

namespace sorrel {
namespace {

constexpr SliderRow::Range brushWidths{12, 90};
constexpr SliderRow::Range intensities{0, 1};

}  // namespace

BlurSection::BlurSection(const SectionContext& context, QWidget* parent)
    : OptionsSection(parent),
      model(context.model),
      style(new SegmentedPicker([this](int index) { model.blurStyle = BlurStyle(index); }, this)),
      apply(new SegmentedPicker([this](int index) { model.blurApply = BlurApply(index); }, this)),
      brushSize(new SliderRow(
          QStringLiteral("paintbrush"), brushWidths, [this](double width) { model.blurBrushWidth = width; },
          this)),
      intensity(new SliderRow(
          QStringLiteral("drop.fill"), intensities, [this](double value) { model.blurIntensity = value; },
          this)),
      watch(model, {&model.blurStyle, &model.blurApply, &model.blurBrushWidth, &model.blurIntensity},
            [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  addRow(style);
  addRow(apply);
  brushRow = addRow(brushSize);
  addDivider();
  addRow(intensity);
  showTexts();
  refresh();
}

void BlurSection::refresh() {
  style->setChosen(static_cast<int>(model.blurStyle.get()));
  apply->setChosen(static_cast<int>(model.blurApply.get()));
  brushRow->setVisible(model.blurApply == BlurApply::brush);
  brushSize->setValue(model.blurBrushWidth);
  intensity->setValue(model.blurIntensity);
}

void BlurSection::showTexts() {
  style->setChoices({{localized(QStringLiteral("editor.blur.gaussian"))},
                     {localized(QStringLiteral("editor.blur.mosaic"))}});
  apply->setChoices(
      {{localized(QStringLiteral("editor.blur.brush"))}, {localized(QStringLiteral("editor.blur.area"))}});
  brushSize->setHelp(localized(QStringLiteral("editor.blur.brushSize.help")));
  intensity->setHelp(localized(QStringLiteral("editor.blur.intensity.help")));
}

}  // namespace sorrel
