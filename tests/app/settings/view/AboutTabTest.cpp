#include "app/settings/view/AboutTab.h"
#include "platform/updater/FeedUpdater.h"
#include "tests/app/settings/view/SettingsFixture.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::UserDefaults;

namespace {

class AboutTabTest : public SettingsFixture {};

TEST_F(AboutTabTest, TheVersionTellsItsBuildWhereThereIsOne) {
  EXPECT_EQ(appVersion(u"1.2"_s, u"34"_s), u"v1.2 (build 34)"_s);
  EXPECT_EQ(appVersion(u"1.2"_s, {}), u"v1.2"_s);
  EXPECT_EQ(appVersion({}, u"34"_s), QString());
}

TEST_F(AboutTabTest, UpdatesAreFetchedUnaskedUnlessTheUserSaysNo) {
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

TEST_F(AboutTabTest, StartingAtLoginIsSwitchedAndAFailureTold) {
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

}  // namespace
