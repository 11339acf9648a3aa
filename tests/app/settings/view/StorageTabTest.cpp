#include "tests/app/settings/view/SettingsFixture.h"

#include <QDialog>
#include <QPlainTextEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::NotificationCenter;
using platform::OpenPanel;
using platform::UserDefaults;

namespace {

class StorageTabTest : public SettingsFixture {};

TEST_F(StorageTabTest, TheAgeOfOldScreenshotsIsStoredThenTold) {
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

TEST_F(StorageTabTest, ABrokenSettingsFileIsTold) {
  open(storage);
  EXPECT_FALSE(text().contains(u"couldn’t be read"_s));
  view.reset();
  home.write(u".config/Sorrel/defaults.json"_s, "not a setting");
  home.restart();
  open(storage);
  EXPECT_TRUE(text().contains(u"couldn’t be read"_s)) << qPrintable(text());
}

TEST_F(StorageTabTest, AFolderIsUsedOnceItsWarningIsAnswered) {
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

}  // namespace
