#pragma once

#include "app/settings/view/SettingsTab.h"
#include "platform/base/Subscription.h"

#include <QUrl>

class QPlainTextEdit;
class QPushButton;

namespace sorrel {

/// When old screenshots go, and the folder that they are in.
class StorageSettingsTab : public SettingsTab {
 public:
  explicit StorageSettingsTab(QWidget* parent);

  void refresh() override;

 private:
  void addRetention();
  void addFolder();
  void refreshRetention();
  void refreshFolder();
  void changeFolder();
  void confirm(const QUrl& folder);
  static void setFolder(const QString& path);

  FormGroup* retention = nullptr;
  FormRow* daysRow = nullptr;
  FormPicker* days = nullptr;
  FormCaption* daysNote = nullptr;
  FormCaption* unreadable = nullptr;
  FormGroup* folder = nullptr;
  FormText* pathLabel = nullptr;
  FormPath* path = nullptr;
  QPushButton* change = nullptr;
  QPushButton* reset = nullptr;
  FormCaption* sharedWarning = nullptr;
  platform::Lifetime lifetime;
};

}  // namespace sorrel
