#pragma once

#include "app/settings/view/SettingsTab.h"

class QCheckBox;
class QPushButton;

namespace sorrel {

class SegmentedPicker;

/// What the program is, its language and its updates.
class AboutTab : public SettingsTab {
 public:
  AboutTab(bool hasUpdater, QWidget* parent);

  void refresh() override;

 private:
  void addHeader();
  void addLanguage();
  void addUpdates();

  const bool hasUpdater;
  QLabel* tagline = nullptr;
  FormGroup* languageGroup = nullptr;
  SegmentedPicker* language = nullptr;
  FormGroup* updates = nullptr;
  FormRow* autoDownloadRow = nullptr;
  QCheckBox* autoDownload = nullptr;
  FormCaption* updatesNote = nullptr;
  QPushButton* checkNow = nullptr;
};

/// "v1.2 (build 34)", without the brackets where there is no build; empty without a version.
[[nodiscard]] QString appVersion(const QString& version, const QString& build);

}  // namespace sorrel
