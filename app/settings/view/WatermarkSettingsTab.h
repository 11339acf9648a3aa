#pragma once

#include "app/settings/view/SettingsTab.h"

#include <QUrl>

class QCheckBox;
class QPushButton;

namespace sorrel {

class FontPicker;
class FontPreview;
class LogoGrid;

/// What new watermarks begin with, and the stored logos. The list of logos is read when the tab is made, and
/// after each change that is made here.
class WatermarkSettingsTab : public SettingsTab {
 public:
  explicit WatermarkSettingsTab(QWidget* parent);

  void refresh() override;

 private:
  void addFont();
  void addLogos();
  void refreshFont();
  void addLogo();
  void showLogos();

  FormGroup* fontGroup = nullptr;
  FormRow* fontRow = nullptr;
  FontPicker* font = nullptr;
  FormRow* previewRow = nullptr;
  FontPreview* preview = nullptr;
  FormRow* rememberRow = nullptr;
  QCheckBox* remember = nullptr;
  QPushButton* reset = nullptr;
  QWidget* resetRow = nullptr;
  FormGroup* logoGroup = nullptr;
  LogoGrid* logos = nullptr;
  QWidget* logosRow = nullptr;
  FormText* noLogos = nullptr;
  QWidget* noLogosRow = nullptr;
  QPushButton* add = nullptr;
  platform::Lifetime lifetime;
};

}  // namespace sorrel
