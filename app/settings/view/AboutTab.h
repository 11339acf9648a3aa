#pragma once

#include "app/settings/view/SettingsTab.h"
#include "platform/desktop/LoginItem.h"

namespace platform {
class Updater;
}
class QCheckBox;
class QPushButton;

namespace sorrel {

class SegmentedPicker;

/// What the program is, its language, its updates and whether it starts by itself.
class AboutTab : public SettingsTab {
 public:
  /// `updater` is null where the program has none.
  AboutTab(platform::Updater* updater, QWidget* parent);

  void refresh() override;

 private:
  void addHeader();
  void addLanguage();
  void addUpdates();
  void addStartup();
  void setStartsAtLogin(bool isWanted);
  void showActivity();

  platform::Updater* const updater;
  QLabel* tagline = nullptr;
  FormGroup* languageGroup = nullptr;
  SegmentedPicker* language = nullptr;
  FormGroup* updates = nullptr;
  FormRow* autoDownloadRow = nullptr;
  QCheckBox* autoDownload = nullptr;
  FormCaption* updatesNote = nullptr;
  QPushButton* checkNow = nullptr;
  FormGroup* startup = nullptr;
  FormRow* atLoginRow = nullptr;
  QCheckBox* atLogin = nullptr;
  platform::LoginItem loginItem;
  platform::Subscription activity;
};

/// "v1.2 (build 34)", without the brackets where there is no build; empty without a version.
[[nodiscard]] QString appVersion(const QString& version, const QString& build);

}  // namespace sorrel
