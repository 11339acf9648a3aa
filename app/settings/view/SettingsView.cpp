#include "app/settings/view/SettingsView.h"

#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/view/AboutTab.h"
#include "app/settings/view/SettingsTabBar.h"
#include "app/settings/view/ShortcutsSettingsTab.h"
#include "app/settings/view/StorageSettingsTab.h"
#include "app/settings/view/WatermarkSettingsTab.h"
#include "platform/base/UserDefaults.h"

#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace sorrel {
namespace {

struct Tab {
  const char* titleKey;
  const char* symbol;
  SettingsTab* (*make)(platform::Updater* updater, QWidget* parent);
};

constexpr int hairline = 1;

constexpr std::array<Tab, 4> allTabs{{
    {"settings.tab.general", "gearshape",
     [](platform::Updater* updater, QWidget* parent) -> SettingsTab* {
       return new AboutTab(updater, parent);
     }},
    {"settings.tab.shortcuts", "keyboard",
     [](platform::Updater*, QWidget* parent) -> SettingsTab* { return new ShortcutsSettingsTab(parent); }},
    {"settings.tab.watermark", "signature",
     [](platform::Updater*, QWidget* parent) -> SettingsTab* { return new WatermarkSettingsTab(parent); }},
    {"settings.tab.storage", "internaldrive",
     [](platform::Updater*, QWidget* parent) -> SettingsTab* { return new StorageSettingsTab(parent); }},
}};

}  // namespace

SettingsView::SettingsView(platform::Updater* updaterOrNull, int firstTab, std::function<void(int)> onSelect)
    : updater(updaterOrNull), bar(new SettingsTabBar(this)) {
  setFixedSize(fixedSize);
  for (const Tab& tab : allTabs)
    bar->add(QString::fromLatin1(tab.symbol));
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(bar, 0, Qt::AlignHCenter);
  column->addSpacing(hairline);
  pages = new QStackedLayout;
  column->addLayout(pages, 1);
  bar->setCurrentIndex(firstTab);
  showTab(firstTab);
  refresh();
  connect(bar, &QTabBar::currentChanged, this, [this, onSelect = std::move(onSelect)](int tab) {
    showTab(tab);
    onSelect(tab);
  });
  bar->setFocus();

  // Shortcuts, so that no control takes these keys for a text.
  const auto turn = [this](QKeySequence::StandardKey keys, int step) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step] {
      bar->setCurrentIndex((bar->currentIndex() + step + bar->count()) % bar->count());
    });
  };
  turn(QKeySequence::NextChild, 1);
  turn(QKeySequence::PreviousChild, -1);

  subscriptions.push_back(
      platform::UserDefaults::standard().observe([this](const QString&) { refreshLater(); }));
  subscriptions.push_back(LocalizationManager::shared().observe([this] { refreshLater(); }));
}

void SettingsView::showTab(int index) {
  SettingsTab*& tab = tabs.at(static_cast<size_t>(index));
  if (!tab) {
    tab = allTabs.at(static_cast<size_t>(index)).make(updater, this);
    pages->addWidget(tab);
  }
  tab->refresh();  // also what nobody tells of, as a file that can't be read any more
  pages->setCurrentWidget(tab);
}

void SettingsView::refreshLater() {
  if (!pendingRefresh.isPending())
    pendingRefresh = platform::MainQueue::main().asyncAfter({}, [this] { refresh(); });
}

void SettingsView::refresh() {
  setWindowTitle(localized(QStringLiteral("settings.title")));
  bar->setAccessibleName(windowTitle());
  for (size_t i = 0; i < allTabs.size(); ++i) {
    bar->setTabText(static_cast<int>(i), localized(QString::fromLatin1(allTabs[i].titleKey)));
    if (tabs[i])
      tabs[i]->refresh();
  }
}

void SettingsView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), LookColors::ground.resolved());
  painter.fillRect(0, bar->geometry().bottom() + 1, width(), hairline, AppColors::separator.resolved());
}

void SettingsView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close))
    close();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace sorrel
