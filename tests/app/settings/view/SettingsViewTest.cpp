#include "KeyboardShortcuts/recorder/RecorderCocoa.h"
#include "app/capture/Notifications.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "app/settings/WatermarkPresets.h"
#include "app/settings/view/AboutTab.h"
#include "app/settings/view/FontPicker.h"
#include "app/settings/view/SettingsView.h"
#include "app/shell/AppColors.h"
#include "app/shell/ShortcutNames.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/OpenPanel.h"
#include "platform/input/LayoutSwitch.h"
#include "platform/updater/FeedUpdater.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::NotificationCenter;
using platform::OpenPanel;
using platform::UserDefaults;

namespace {

enum Tab { general, shortcuts, watermark, storage };

/// Answers in the user's place.
class OpenPanelDouble : public platform::OpenPanelPresenter {
 public:
  void present(const OpenPanel& panel, QWidget&, Chosen chosen) override {
    asked = panel;
    chosen(answer);
  }

  OpenPanel asked;
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

class SettingsViewTest : public testing::Test {
 protected:
  SettingsViewTest() {
    platform::Environment::provide<platform::OpenPanelPresenter>(openPanel);
    platform::Environment::provide<platform::HotKeyService>(hotKeys);
    LocalizationManager::shared().setLanguage(AppLanguage::en);
    for (const char* name : {Notifications::retentionChanged, Notifications::storageLocationChanged,
                             Notifications::checkForUpdates})
      subscriptions.push_back(NotificationCenter::defaultCenter().addObserver(
          QString::fromLatin1(name), NotificationCenter::Queue::PostingThread,
          [this](const platform::Notification& notification) { posted << notification.name; }));
  }

  void open(Tab tab) {
    view = std::make_unique<SettingsView>(hasUpdater ? &updater : nullptr, tab, [](int) {});
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
    UserDefaults::standard().set(key, value);
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
  std::unique_ptr<SettingsView> view;
};

TEST_F(SettingsViewTest, TheVersionTellsItsBuildWhereThereIsOne) {
  EXPECT_EQ(appVersion(u"1.2"_s, u"34"_s), u"v1.2 (build 34)"_s);
  EXPECT_EQ(appVersion(u"1.2"_s, {}), u"v1.2"_s);
  EXPECT_EQ(appVersion({}, u"34"_s), QString());
}

TEST_F(SettingsViewTest, WhatTakesTheKeyboardHasAName) {
  store(SettingsKeys::storageDirectory, home.path(u"pictures"_s));
  store(SettingsKeys::watermarkFontFamily, u"Some Family"_s);
  for (const Tab tab : {general, shortcuts, watermark, storage}) {
    open(tab);
    for (auto* const widget : view->findChildren<QWidget*>()) {
      const bool takesKeyboard = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus);
      EXPECT_FALSE(takesKeyboard &&
                   QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
          << widget->metaObject()->className() << " on tab " << tab;
    }
  }
}

TEST_F(SettingsViewTest, TextsFollowTheLanguageAtOnce) {
  open(storage);
  EXPECT_EQ(view->windowTitle(), u"Sorrel Settings"_s);
  store(SettingsKeys::appLanguage, u"ko"_s);
  EXPECT_EQ(view->windowTitle(), u"Sorrel 설정"_s);
  EXPECT_EQ(view->findChild<QTabBar*>()->tabText(watermark), u"워터마크"_s);
  EXPECT_EQ(control<QComboBox>(u"휴지통으로 이동"_s)->currentText(), u"30일 뒤"_s);
}

TEST_F(SettingsViewTest, TextsCanBeReadWhenTheDesktopTurnsDark) {
  const QPalette before = QApplication::palette();
  open(storage);
  for (const auto appearance : {platform::Appearance::Dark, platform::Appearance::Light}) {
    QApplication::setPalette(platform::paletteOf(appearance, AppColors::accent));
    QCoreApplication::processEvents();
    for (const auto* label : view->findChildren<QLabel*>())
      EXPECT_EQ(label->palette().color(QPalette::WindowText).lightness() > 127,
                appearance == platform::Appearance::Dark)
          << qPrintable(label->text());
  }
  QApplication::setPalette(before);
}

TEST_F(SettingsViewTest, TheAgeOfOldScreenshotsIsStoredThenTold) {
  open(storage);
  auto* const days = control<QComboBox>(u"Move to Trash"_s);
  EXPECT_EQ(days->currentText(), u"After 30 days"_s);
  qint64 stored = 0;
  const auto told = NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(Notifications::retentionChanged), NotificationCenter::Queue::PostingThread,
      [&](const auto&) { stored = UserDefaults::standard().value(SettingsKeys::autoDeleteDays); });
  choose(days, 1);
  EXPECT_EQ(stored, 7);
  choose(days, 1);
  EXPECT_EQ(posted.size(), 1) << "nothing has changed";
  clock.run();
  EXPECT_TRUE(text().contains(u"older than 7 days"_s)) << qPrintable(text());

  store(SettingsKeys::autoDeleteDays, qint64(45));
  EXPECT_EQ(days->currentIndex(), -1) << "edited by hand";
  EXPECT_TRUE(text().contains(u"older than 45 days"_s)) << qPrintable(text());
  choose(days, 0);
  clock.run();
  EXPECT_TRUE(text().contains(u"until you delete them"_s)) << qPrintable(text());
}

TEST_F(SettingsViewTest, UpdatesAreFetchedUnaskedUnlessTheUserSaysNo) {
  const auto& isAutomatic = platform::UpdaterSettings::automaticallyUpdate;
  open(general);
  auto* const automatic = control<QCheckBox>(u"Download updates automatically"_s);
  EXPECT_TRUE(automatic->isChecked());
  automatic->click();
  EXPECT_FALSE(UserDefaults::standard().value(isAutomatic));
  store(isAutomatic, true);
  EXPECT_TRUE(automatic->isChecked()) << "edited by hand";
  auto* const check = control(u"Check for Updates…"_s);
  check->click();
  EXPECT_EQ(posted, QStringList{QString::fromLatin1(Notifications::checkForUpdates)});
  updater.turnTo(platform::Updater::Activity::Checking);
  EXPECT_EQ(check->text(), u"Checking for Updates…"_s);
  updater.turnTo(platform::Updater::Activity::Downloading);
  EXPECT_EQ(check->text(), u"Downloading Update…"_s);
  updater.turnTo(platform::Updater::Activity::None);
  EXPECT_EQ(check->text(), u"Check for Updates…"_s);

  hasUpdater = false;
  open(general);
  EXPECT_FALSE(control<QCheckBox>(u"Download updates automatically"_s)->isEnabled());
  EXPECT_FALSE(control(u"Check for Updates…"_s)->isEnabled());
  EXPECT_TRUE(text().contains(u"no updater"_s)) << qPrintable(text());
}

TEST_F(SettingsViewTest, ShortcutsThatTheLayoutsSwitchTakesAreNamed) {
  auto& layoutSwitch = platform::LayoutSwitch::current();
  ShortcutNames::openHistory().setShortcut(
      KeyboardShortcuts::Shortcut(KeyboardShortcuts::Key::f5, platform::ModifierFlag::Control));
  open(shortcuts);
  EXPECT_EQ(view->findChildren<KeyboardShortcuts::RecorderCocoa*>().size(), 4);
  EXPECT_FALSE(text().contains(u"layout is switched"_s));
  layoutSwitch.update({platform::HotKeyModifier::Control});
  EXPECT_TRUE(text().contains(u"layout is switched by the modifiers of ⌃F5, so"_s)) << qPrintable(text());
  ShortcutNames::openHistory().setShortcut(std::nullopt);
  clock.run();
  EXPECT_FALSE(text().contains(u"layout is switched"_s));
}

TEST_F(SettingsViewTest, WhereTheDesktopKeepsTheKeysItsOwnAreShown) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Portal, {{u"openHistory"_s, u"Meta+H"_s}}, {}});
  EXPECT_TRUE(text().contains(u"Meta+H"_s)) << qPrintable(text());
  EXPECT_TRUE(text().contains(u"Not set"_s));
  EXPECT_TRUE(text().contains(u"Your desktop keeps these shortcuts"_s));
  auto* const recorder = view->findChild<KeyboardShortcuts::RecorderCocoa*>();
  EXPECT_FALSE(recorder->isVisible());
  ShortcutNames::captureNormal().setShortcut(std::nullopt);
  clock.run();
  EXPECT_TRUE(recorder->isVisible()) << "the desktop isn't asked for one that was emptied";
}

TEST_F(SettingsViewTest, ConsentIsAskedForInTheTabAndCanBeTakenBack) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Sway, {}, {u"captureNormal"_s}});
  EXPECT_TRUE(view->findChild<KeyboardShortcuts::RecorderCocoa*>()->isVisible());
  EXPECT_TRUE(text().contains(u"already uses"_s)) << qPrintable(text());
  const auto isAgreed = [] { return UserDefaults::standard().value(platform::hotKeysMayBeBound); };
  auto* const consent = control<QCheckBox>(u"Bind these shortcuts in sway"_s);
  ASSERT_TRUE(consent && consent->isVisible());
  EXPECT_FALSE(consent->isChecked() || isAgreed()) << "nothing happens unasked";
  consent->click();
  EXPECT_TRUE(isAgreed());
  consent->click();
  EXPECT_FALSE(isAgreed());
  hotKeys->setState({platform::HotKeyWay::Gnome, {}, {}});
  EXPECT_TRUE(text().contains(u"GNOME"_s));
}

TEST_F(SettingsViewTest, WithoutHotKeysTheCommandsCanBeCopied) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Commands, {}, {}});
  EXPECT_TRUE(text().contains(u"Give these commands their keys"_s)) << qPrintable(text());
  auto* const command = control<QPlainTextEdit>(u"Capture to clipboard"_s);
  ASSERT_TRUE(command && command->isVisible());
  EXPECT_TRUE(command->toPlainText().endsWith(u" --capture-to-clipboard"_s))
      << qPrintable(command->toPlainText());
  control<QAbstractButton>(u"Copy Command"_s)->click();
  QCoreApplication::processEvents();
  EXPECT_TRUE(QGuiApplication::clipboard()->text().endsWith(u" --capture"_s));
}

TEST_F(SettingsViewTest, ABrokenSettingsFileIsTold) {
  open(storage);
  EXPECT_FALSE(text().contains(u"couldn’t be read"_s));
  view.reset();
  home.write(u".config/Sorrel/defaults.json"_s, "not a setting");
  home.restart();
  open(storage);
  EXPECT_TRUE(text().contains(u"couldn’t be read"_s)) << qPrintable(text());
}

TEST_F(SettingsViewTest, StartingAtLoginIsSwitchedAndAFailureTold) {
  open(general);
  auto* const atLogin = control<QCheckBox>(u"Start Sorrel when you log in"_s);
  ASSERT_TRUE(atLogin);
  EXPECT_FALSE(atLogin->isChecked());
  atLogin->click();
  const QString entry = home.path(u".config/autostart/org.sorrel.Sorrel.desktop"_s);
  EXPECT_TRUE(atLogin->isChecked() && QFile::exists(entry));
  home.write(u".config/autostart/org.sorrel.Sorrel.desktop"_s, "[Desktop Entry]\nExec=sorrel\nHidden=true\n");
  testing_support::until("another program's change is seen", [&] { return !atLogin->isChecked(); });

  // A folder has the entry's place.
  ASSERT_TRUE(QFile::remove(entry) && QDir().mkpath(entry + u"/full"_s));
  atLogin->click();
  EXPECT_FALSE(atLogin->isChecked());
  ASSERT_TRUE(alert());
  alert()->reject();
}

TEST_F(SettingsViewTest, AFolderIsUsedOnceItsWarningIsAnswered) {
  open(storage);
  const auto path = [&] { return view->findChild<QPlainTextEdit*>()->toPlainText(); };
  const auto folder = [] { return UserDefaults::standard().value(SettingsKeys::storageDirectory); };
  EXPECT_EQ(path(), u"~/Documents/Sorrel bottle"_s);
  auto* const change = control(u"Change Folder…"_s);
  change->click();
  EXPECT_FALSE(alert()) << "the chooser was left";
  EXPECT_EQ(openPanel->asked.choice, OpenPanel::Choice::Folder);

  openPanel->answer = {QUrl::fromLocalFile(home.path(u"Documents/Sorrel bottle"_s))};
  change->click();
  ASSERT_TRUE(alert());
  EXPECT_EQ(alert()->accessibleDescription(), home.path(u"Documents/Sorrel bottle"_s)) << "in full";
  QTest::keyClick(alert(), Qt::Key_Escape);
  EXPECT_TRUE(folder().isEmpty() && posted.isEmpty());
  EXPECT_FALSE(text().contains(u"whoever put it there"_s));

  change->click();
  QTest::keyClick(alert(), Qt::Key_Return);
  EXPECT_EQ(folder(), home.path(u"Documents/Sorrel bottle"_s)) << "the default folder too, if chosen by hand";
  EXPECT_EQ(std::exchange(posted, {}),
            QStringList{QString::fromLatin1(Notifications::storageLocationChanged)});
  clock.run();
  EXPECT_EQ(path(), u"~/Documents/Sorrel bottle"_s);
  EXPECT_TRUE(text().contains(u"whoever put it there"_s)) << qPrintable(text());

  control(u"Use Default Folder"_s)->click();
  EXPECT_FALSE(alert());
  EXPECT_TRUE(folder().isEmpty());
  EXPECT_EQ(posted.size(), 1);
  clock.run();
  EXPECT_FALSE(text().contains(u"whoever put it there"_s));
}

TEST_F(SettingsViewTest, LogosAreAddedSeveralAtOnceAndRemoved) {
  QImage picture(4, 4, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(home.path(u"one.png"_s)) && picture.save(home.path(u"two.png"_s)));
  open(watermark);
  EXPECT_TRUE(text().contains(u"No logos yet"_s));
  openPanel->answer = {QUrl::fromLocalFile(home.path(u"one.png"_s)),
                       QUrl::fromLocalFile(home.path(u"gone.png"_s)),
                       QUrl::fromLocalFile(home.path(u"two.png"_s))};
  control(u"Add Logos…"_s)->click();
  EXPECT_EQ(openPanel->asked.choice, OpenPanel::Choice::Files);
  EXPECT_EQ(WatermarkPresets::all().size(), 2);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_FALSE(text().contains(u"No logos yet"_s));
  for (int left = 1; left >= 0; --left) {
    control<QAbstractButton>(u"Delete this logo"_s)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(WatermarkPresets::all().size(), left);
  }
  EXPECT_TRUE(text().contains(u"No logos yet"_s));
  EXPECT_TRUE(QFile::exists(home.path(u"one.png"_s))) << "the copy alone went";
}

TEST_F(SettingsViewTest, EveryLogoCanBeReached) {
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(home.path(u"logo.png"_s)));
  for (int i = 0; i < 50; ++i)
    ASSERT_TRUE(WatermarkPresets::add(QUrl::fromLocalFile(home.path(u"logo.png"_s))));
  open(watermark);
  QApplication::processEvents();
  auto* const form = view->findChild<QScrollArea*>();
  auto* const addLogo = control(u"Add Logos…"_s);
  form->ensureWidgetVisible(addLogo);
  EXPECT_EQ(addLogo->visibleRegion(), QRegion(addLogo->rect()));
  for (const auto* logo : view->findChildren<QAbstractButton*>())
    EXPECT_TRUE(logo->accessibleName() != u"Delete this logo"_s ||
                form->widget()->rect().contains(QRect(logo->mapTo(form->widget(), QPoint()), logo->size())));
}

TEST_F(SettingsViewTest, AFontIsChosenAmongTheInstalledAndGivenUp) {
  open(watermark);
  auto* const font = dynamic_cast<FontPicker*>(control<QComboBox>(u"Font"_s));
  ASSERT_TRUE(font && font->count() > 1);
  EXPECT_EQ(font->currentText(), u"System font, bold"_s);
  choose(font, 1);
  const auto stored = [] { return UserDefaults::standard().value(SettingsKeys::watermarkFontFamily); };
  EXPECT_EQ(stored(), font->itemText(1));
  clock.run();
  control(u"Use System Font"_s)->click();
  EXPECT_EQ(stored(), QString());
  clock.run();
  EXPECT_EQ(font->currentIndex(), 0);
  store(SettingsKeys::watermarkFontFamily, u"Not Installed"_s);
  EXPECT_EQ(font->currentIndex(), -1);
  EXPECT_EQ(font->placeholderText(), u"Not Installed"_s);
}

TEST_F(SettingsViewTest, TheKeyboardGoesThroughTheTabsAndOut) {
  open(watermark);
  QApplication::setActiveWindow(view.get());
  auto* const bar = view->findChild<QTabBar*>();
  control<QComboBox>(u"Font"_s)->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(bar->currentIndex(), storage);
  for (int step = 0; step < 2; ++step)
    QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(bar->currentIndex(), shortcuts);
  QTest::keyClick(view.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClick(view.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(bar->currentIndex(), storage);

  // From the bar in both directions, through what is above and below the form's edges.
  bar->setCurrentIndex(general);
  bar->setFocus();
  QTest::keyClick(bar, Qt::Key_Backtab, Qt::ShiftModifier);
  auto* const atLogin = control<QCheckBox>(u"Start Sorrel when you log in"_s);
  EXPECT_EQ(QApplication::focusWidget(), atLogin);
  EXPECT_EQ(atLogin->visibleRegion(), QRegion(atLogin->rect()));
  QTest::keyClick(view.get(), Qt::Key_Escape);
  EXPECT_FALSE(view->isVisible());
}

}  // namespace
