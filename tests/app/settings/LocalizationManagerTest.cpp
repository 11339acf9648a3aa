#include "app/settings/LocalizationManager.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Bundle;
using platform::UserDefaults;
using sorrel::AppLanguage;
using sorrel::LocalizationManager;
using sorrel::localized;

namespace {

const QString quit = u"menu.quit"_s;
const QString languageKey = u"appLanguage"_s;

class LocalizationManagerTest : public testing::Test {
 protected:
  LocalizationManagerTest() { startWith(u":/sorrel"_s, {u"en-GB"_s}); }

  /// As at a start of the program with these resources and this desktop's languages.
  void startWith(const QString& resources, const QStringList& languages) {
    home.restart();
    platform::Environment::provide(std::make_shared<const Bundle>(resources, languages));
  }

  testing_support::ScratchHome home;
};

TEST_F(LocalizationManagerTest, followsTheSystemUntilTheUserChooses) {
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system);
  EXPECT_EQ(localized(quit), u"Quit Sorrel"_s);
  EXPECT_EQ(localized(u"no.such.key"_s), u"no.such.key"_s);
  EXPECT_FALSE(UserDefaults::standard().contains(languageKey)) << "reading stores nothing";
  startWith(u":/sorrel"_s, {u"fr-FR"_s, u"ko-KR"_s});
  EXPECT_EQ(localized(quit), u"Sorrel 종료"_s);
}

TEST_F(LocalizationManagerTest, aChoiceIsStoredAndOutlivesARestart) {
  auto& manager = LocalizationManager::shared();
  int changes = 0;
  auto token = manager.observe([&] {
    ++changes;
    EXPECT_EQ(UserDefaults::standard().string(languageKey), u"ko"_s);
    EXPECT_EQ(localized(quit), u"Sorrel 종료"_s) << "observers find the new table";
  });
  manager.setLanguage(AppLanguage::ko);
  EXPECT_EQ(changes, 1);
  token.end();
  manager.setLanguage(AppLanguage::en);
  EXPECT_EQ(changes, 1) << "nothing more after its end";
  startWith(u":/sorrel"_s, {u"ko-KR"_s});
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::en);
  EXPECT_EQ(localized(quit), u"Quit Sorrel"_s);
}

TEST_F(LocalizationManagerTest, anUnknownStoredLanguageIsTheSystemsAndStaysStoredUntilTheNextChange) {
  UserDefaults::standard().set(languageKey, 7);
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system);
  UserDefaults::standard().set(languageKey, u"de"_s);
  startWith(u":/sorrel"_s, {u"en-GB"_s});
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system);
  EXPECT_EQ(UserDefaults::standard().string(languageKey), u"de"_s);
  LocalizationManager::shared().setLanguage(AppLanguage::system);
  EXPECT_EQ(UserDefaults::standard().string(languageKey), u"system"_s);
}

TEST_F(LocalizationManagerTest, aMissingLanguageFolderLeavesTheMainBundleUntilItIsThere) {
  QDir().mkpath(home.path(u"en.lproj"_s));
  QFile::copy(u":/sorrel/en.lproj/Localizable.qm"_s, home.path(u"en.lproj/Localizable.qm"_s));
  startWith(home.path(), {u"ko-KR"_s});
  auto& manager = LocalizationManager::shared();
  manager.setLanguage(AppLanguage::ko);
  EXPECT_EQ(manager.language(), AppLanguage::ko);
  EXPECT_EQ(manager.bundle(), Bundle::main());
  EXPECT_EQ(localized(quit), u"Quit Sorrel"_s) << "the system's choice of language";

  startWith(home.path(u"nothing"_s), {});
  EXPECT_EQ(LocalizationManager::shared().bundle(), Bundle::main()) << "not even English";
  EXPECT_EQ(localized(quit), quit);
}

}  // namespace
