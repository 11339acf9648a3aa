#include "app/settings/view/WatermarkSettingsTab.h"

#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "app/settings/WatermarkPresets.h"
#include "app/settings/view/FontPicker.h"
#include "app/settings/view/LogoGrid.h"
#include "platform/desktop/OpenPanel.h"

#include <QCheckBox>
#include <QPushButton>

namespace sorrel {
namespace {

constexpr int previewWidth = 290;

void storeFamily(const QString& family) {
  platform::UserDefaults::standard().set(SettingsKeys::watermarkFontFamily, family);
}

}  // namespace

WatermarkSettingsTab::WatermarkSettingsTab(QWidget* parent) : SettingsTab(parent) {
  addFont();
  addLogos();
  showLogos();
}

void WatermarkSettingsTab::addFont() {
  fontGroup = addGroup();
  font = new FontPicker(this);
  fontRow = fontGroup->addRow(font);
  preview = new FontPreview(this);
  preview->setFixedWidth(previewWidth);
  previewRow = fontGroup->addRow(preview);
  remember = new QCheckBox;
  rememberRow = fontGroup->addRow(remember);
  reset = new QPushButton;
  resetRow = fontGroup->addButtons({reset});
  connect(font, &QComboBox::activated, this, [this] { storeFamily(font->family()); });
  connect(remember, &QCheckBox::clicked, this, [](bool isOn) {
    platform::UserDefaults::standard().set(SettingsKeys::rememberWatermarkText, isOn);
  });
  connect(reset, &QPushButton::clicked, this, [] { storeFamily(QString()); });
}

void WatermarkSettingsTab::addLogos() {
  logoGroup = addGroup();
  noLogos = new FormText({11, QFont::Normal, LookColors::secondaryLabel}, this);
  noLogos->setWordWrap(true);
  noLogosRow = logoGroup->addWide(noLogos);
  logos = new LogoGrid(
      [this](const QUrl& logo) {
        WatermarkPresets::remove(logo);
        showLogos();
      },
      this);
  logosRow = logoGroup->addWide(logos);
  add = new QPushButton;
  logoGroup->addButtons({add});
  connect(add, &QPushButton::clicked, this, &WatermarkSettingsTab::addLogo);
}

void WatermarkSettingsTab::refresh() {
  refreshFont();
  logoGroup->setTitle(localized(QStringLiteral("settings.watermark.logoSection")));
  noLogos->setText(localized(QStringLiteral("settings.watermark.logoEmpty")));
  logos->setRemoveHelp(localized(QStringLiteral("settings.watermark.delete")));
  add->setText(localized(QStringLiteral("settings.watermark.addLogo")));
}

void WatermarkSettingsTab::refreshFont() {
  const auto& defaults = platform::UserDefaults::standard();
  const QString family = defaults.value(SettingsKeys::watermarkFontFamily);
  fontGroup->setTitle(localized(QStringLiteral("settings.watermark.fontSection")));
  fontRow->setLabel(localized(QStringLiteral("settings.watermark.font")));
  font->setSystemFontTitle(localized(QStringLiteral("settings.watermark.systemFont")));
  font->setFamily(family);
  previewRow->setLabel(localized(QStringLiteral("settings.watermark.preview")));
  preview->show(localized(QStringLiteral("settings.watermark.previewSample")), family);
  rememberRow->setLabel(localized(QStringLiteral("settings.watermark.rememberText")));
  remember->setChecked(defaults.value(SettingsKeys::rememberWatermarkText));
  reset->setText(localized(QStringLiteral("settings.watermark.resetFont")));
  if (family.isEmpty() && reset->hasFocus())
    font->setFocus();
  resetRow->setVisible(!family.isEmpty());
}

void WatermarkSettingsTab::addLogo() {
  platform::OpenPanel panel;
  panel.choice = platform::OpenPanel::Choice::Files;
  panel.message = localized(QStringLiteral("settings.watermark.pickLogoMessage"));
  panel.contentsTitle = localized(QStringLiteral("common.pictures"));
  panel.contentTypes = QStringList{QStringLiteral("image/png"), QStringLiteral("image/jpeg"),
                                   QStringLiteral("image/tiff"), QStringLiteral("image/*")};
  platform::OpenPanelPresenter::shared().present(panel, *window(),
                                                 lifetime.guarded([this](const QList<QUrl>& files) {
                                                   for (const QUrl& file : files)
                                                     WatermarkPresets::add(file);
                                                   showLogos();
                                                 }));
}

void WatermarkSettingsTab::showLogos() {
  const QList<QUrl> presets = WatermarkPresets::all();
  logos->setLogos(presets);
  if (presets.isEmpty() && logos->isAncestorOf(focusWidget()))
    add->setFocus();
  logosRow->setVisible(!presets.isEmpty());
  noLogosRow->setVisible(presets.isEmpty());
}

}  // namespace sorrel
