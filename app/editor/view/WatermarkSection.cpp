#include "app/editor/view/WatermarkSection.h"

#include "app/editor/view/LogoMenuButton.h"
#include "app/editor/view/PopoverTiming.h"
#include "app/editor/view/SliderRow.h"
#include "app/editor/view/WatermarkPlacement.h"
#include "app/look/ButtonControls.h"
#include "app/look/LookColors.h"
#include "app/look/SegmentedPicker.h"
#include "app/look/SymbolButton.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/FilePath.h"
#include "platform/desktop/OpenPanel.h"
#include "platform/imaging/codecs/ImageDecoder.h"

#include <QHBoxLayout>

namespace sorrel {
namespace {

constexpr int clearSide = 11;
constexpr int clearSize = 24;

QString textOf(const char* key) {
  return localized(QString::fromLatin1(key));
}

SymbolButton* clearButton(QWidget* parent) {
  auto* const button = new SymbolButton(
      {.symbol = QStringLiteral("trash"), .side = clearSide, .ink = LookColors::secondaryLabel}, clearSize,
      parent);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

QWidget* sideBySide(QWidget* left, QWidget* right, QWidget* parent) {
  auto* const row = new QWidget(parent);
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(8);
  line->addWidget(left);
  line->addStretch();
  line->addWidget(right);
  return row;
}

}  // namespace

WatermarkSection::WatermarkSection(const SectionContext& context, QWidget* parent)
    : OptionsSection(parent),
      model(context.model),
      timing(context.timing),
      edit(new QPushButton(this)),
      alignment(new SegmentedPicker(
          [this](int index) {
            model.textWM.change([index](TextWatermark& text) {
              text.alignment = static_cast<platform::TextAlignment>(index);
            });
          },
          this)),
      textClear(clearButton(this)),
      logoClear(clearButton(this)),
      watch(model, {&model.textWM, &model.logoWM}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  edit->setDefault(true);
  edit->setFocusPolicy(Qt::TabFocus);
  connect(edit, &QAbstractButton::clicked, this, [this] { beginTextEditing(model); });
  addRow(edit);
  addTextSetting("circle.lefthalf.filled", &TextWatermark::opacity, 0.2, 1, "editor.text.opacity.help");
  addTextSetting("textformat.size", &TextWatermark::scale, 0.2, 6, "editor.text.size.help");
  addTextSetting("arrow.left.and.right", &TextWatermark::tracking, -12, 20, "editor.text.tracking.help");
  addTextSetting("arrow.up.and.down", &TextWatermark::lineSpacing, 0, 24, "editor.text.linespacing.help");
  addAlignment();
  addDivider();
  addLogoSetting("circle.lefthalf.filled", &LogoWatermark::opacity, 0.2, 1, "editor.logo.opacity.help");
  addLogoSetting("textformat.size", &LogoWatermark::scale, 0.2, 6, "editor.logo.size.help");
  addLogoMenu();
  showTexts();
}

void WatermarkSection::addTextSetting(const char* symbol, double TextWatermark::*field, double least,
                                      double greatest, const char* helpKey) {
  auto* const slider = new SliderRow(
      QString::fromLatin1(symbol), {least, greatest},
      [this, field](double value) { model.textWM.change([&](TextWatermark& text) { text.*field = value; }); },
      this);
  textSettings.push_back({field, slider, helpKey, addRow(slider)});
}

void WatermarkSection::addLogoSetting(const char* symbol, double LogoWatermark::*field, double least,
                                      double greatest, const char* helpKey) {
  auto* const slider = new SliderRow(
      QString::fromLatin1(symbol), {least, greatest},
      [this, field](double value) {
        if (model.logoWM.get())
          model.logoWM.change([&](auto& logo) { (*logo).*field = value; });
      },
      this);
  logoSettings.push_back({field, slider, helpKey, addRow(slider)});
}

void WatermarkSection::addAlignment() {
  alignmentRow = addRow(sideBySide(alignment, textClear, this));
  connect(textClear, &QAbstractButton::clicked, this, [this] { clearText(); });
}

void WatermarkSection::addLogoMenu() {
  logoMenu = new LogoMenuButton({.pickFile = [this] { pickLogoFromFile(); },
                                 .choose = [this](const QUrl& logo) { setLogoFrom(logo); },
                                 .opens = [this] { timing.beginWorkElsewhere(); },
                                 .closes = [this] { timing.endWorkElsewhere(); }},
                                this);
  addRow(sideBySide(logoMenu, logoClear, this));
  connect(logoClear, &QAbstractButton::clicked, this, [this] { model.logoWM = std::nullopt; });
}

void WatermarkSection::clearText() {
  model.textWM.change([](TextWatermark& text) { text.text.clear(); });
  if (model.isEditingText)
    model.isEditingText = false;
}

void WatermarkSection::pickLogoFromFile() {
  platform::OpenPanel panel;
  panel.message = textOf("editor.logo.pickMessage");
  panel.contentsTitle = textOf("common.pictures");
  panel.contentTypes = {QStringLiteral("image/png"), QStringLiteral("image/jpeg"),
                        QStringLiteral("image/tiff"), QStringLiteral("image/*")};
  timing.beginWorkElsewhere();
  platform::OpenPanelPresenter::shared().present(panel, *window(),
                                                 lifetime.guarded([this](const QList<QUrl>& files) {
                                                   timing.endWorkElsewhere();
                                                   if (!files.isEmpty())
                                                     setLogoFrom(files.first());
                                                 }));
}

/// What isn't a picture leaves all as it is.
void WatermarkSection::setLogoFrom(const QUrl& file) {
  if (const auto picture = platform::ImageDecoder::read(platform::FilePath::of(file)))
    model.setLogo(*picture);
}

void WatermarkSection::refresh() {
  const TextWatermark& text = model.textWM;
  edit->setText(textOf(text.isBlank() ? "editor.text.add" : "editor.text.edit"));
  setSymbol(*edit, text.isBlank() ? QStringLiteral("plus") : QStringLiteral("pencil"));
  for (const auto& setting : textSettings) {
    setting.slider->setValue(text.*setting.field);
    setting.row->setVisible(!text.isBlank());
  }
  alignment->setChosen(static_cast<int>(text.alignment));
  alignmentRow->setVisible(!text.isBlank());
  const auto& logo = model.logoWM.get();
  for (const auto& setting : logoSettings) {
    if (logo)
      setting.slider->setValue((*logo).*setting.field);
    setting.row->setVisible(logo.has_value());
  }
  logoMenu->setText(textOf(logo ? "editor.logo.change" : "editor.logo.add"));
  logoClear->setVisible(logo.has_value());
}

void WatermarkSection::showTexts() {
  for (const auto& setting : textSettings)
    setting.slider->setHelp(textOf(setting.helpKey));
  for (const auto& setting : logoSettings)
    setting.slider->setHelp(textOf(setting.helpKey));
  alignment->setChoices({{textOf("editor.text.alignLeft"), QStringLiteral("text.alignleft")},
                         {textOf("editor.text.alignCenter"), QStringLiteral("text.aligncenter")},
                         {textOf("editor.text.alignRight"), QStringLiteral("text.alignright")}});
  textClear->setHelp(textOf("editor.text.clear.help"));
  logoClear->setHelp(textOf("editor.logo.clear.help"));
  refresh();
}

}  // namespace sorrel
