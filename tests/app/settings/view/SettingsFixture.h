#pragma once

#include "app/capture/Notifications.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "app/settings/view/SettingsView.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/OpenPanel.h"
#include "platform/updater/Updater.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

/// Answers in the user's place.
class OpenPanelDouble : public platform::OpenPanelPresenter {
 public:
  void present(const platform::OpenPanel& panel, QWidget&, Chosen chosen) override {
    asked = panel;
    chosen(answer);
  }

  platform::OpenPanel asked;
  QList<QUrl> answer;
};

class UpdaterDouble : public platform::Updater {
 public:
  void setAutomaticallyChecksForUpdates(bool) override {}
  void checkForUpdates() override {}
  [[nodiscard]] Activity activity() const override { return present; }
  [[nodiscard]] platform::Subscription observe(std::function<void()> observer) override {
    return observers.add(std::move(observer));
  }
  void turnTo(Activity activity) {
    present = activity;
    observers.tell();
  }

 private:
  Activity present = Activity::None;
  platform::Listeners<> observers;
};

/// The settings' window in English, on one of its tabs.
class SettingsFixture : public testing::Test {
 protected:
  enum Tab { general, shortcuts, watermark, storage };

  SettingsFixture() {
    using platform::NotificationCenter;
    platform::Environment::provide<platform::OpenPanelPresenter>(openPanel);
    platform::Environment::provide<platform::HotKeyService>(hotKeys);
    sorrel::LocalizationManager::shared().setLanguage(sorrel::AppLanguage::en);
    for (const char* name :
         {sorrel::Notifications::retentionChanged, sorrel::Notifications::storageLocationChanged,
          sorrel::Notifications::checkForUpdates})
      subscriptions.push_back(NotificationCenter::defaultCenter().addObserver(
          QString::fromLatin1(name), NotificationCenter::Queue::PostingThread,
          [this](const platform::Notification& notification) { posted << notification.name; }));
  }

  void open(Tab tab) {
    view = std::make_unique<sorrel::SettingsView>(hasUpdater ? &updater : nullptr, tab, [](int) {});
    view->show();
  }
  template <typename Control = QPushButton>
  [[nodiscard]] Control* control(const QString& name) const {
    for (auto* candidate : view->findChildren<Control*>())
      if (candidate->accessibleName() == name ||
          QAccessible::queryAccessibleInterface(candidate)->text(QAccessible::Name) == name)
        return candidate;
    ADD_FAILURE() << "no " << qPrintable(name);
    return nullptr;
  }
  /// What can be read on the tab, from top to bottom.
  [[nodiscard]] QString text() const {
    QStringList lines;
    for (const auto* label : view->findChildren<QLabel*>())
      if (label->isVisible())
        lines << label->text();
    return lines.join(u'|');
  }
  template <typename Value>
  void store(const platform::SettingsKey<Value>& key, const Value& value) {
    platform::UserDefaults::standard().set(key, value);
    clock.run();
  }
  [[nodiscard]] static QDialog* alert() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  static void choose(QComboBox* picker, int row) {
    picker->setCurrentIndex(row);
    Q_EMIT picker->activated(row);
  }

  testing_support::ScratchHome home;
  platform::ManualClock clock;
  testing_support::LogCapture log;
  const std::shared_ptr<OpenPanelDouble> openPanel = std::make_shared<OpenPanelDouble>();
  const std::shared_ptr<testing_support::HotKeyServiceDouble> hotKeys =
      std::make_shared<testing_support::HotKeyServiceDouble>();
  UpdaterDouble updater;
  bool hasUpdater = true;
  QStringList posted;
  std::vector<platform::Subscription> subscriptions;
  std::unique_ptr<sorrel::SettingsView> view;
};
