#pragma once

#include "app/settings/view/SettingsTab.h"
#include "platform/base/MainQueue.h"

#include <array>

namespace platform {
class Updater;
}
class QStackedLayout;

namespace sorrel {

class SettingsTabBar;

/// The settings: four tabs, each made when it is first seen. It follows the stored values and the language,
/// whoever changes them; its window's title too.
class SettingsView : public QWidget {
 public:
  static constexpr QSize fixedSize{500, 420};

  /// Without an updater, what asks for one can't be used. Tabs go by their place in the bar;
  /// `onSelect` hears which one the user turns to.
  SettingsView(platform::Updater* updater, int firstTab, std::function<void(int)> onSelect);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void showTab(int tab);
  void refreshLater();
  void refresh();

  platform::Updater* const updater;
  SettingsTabBar* const bar;
  QStackedLayout* pages;
  std::array<SettingsTab*, 4> tabs{};  // null until it is first seen
  platform::WorkItem pendingRefresh;
  std::vector<platform::Subscription> subscriptions;
};

}  // namespace sorrel
