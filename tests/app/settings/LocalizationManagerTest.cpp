#include "app/settings/LocalizationManager.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QDir>

#include <gtest/gtest.h>

using platform::Bundle;
using platform::UserDefaults;
using sorrel::AppLanguage;
using sorrel::LocalizationManager;
using sorrel::localized;

namespace {

const QString quit = QStringLiteral("menu.quit");
const QString languageKey = QStringLiteral("appLanguage");

class LocalizationManagerTest : public testing::Test {
 protected:
  LocalizationManagerTest() { startWith(QStringLiteral(":/sorrel"), {QStringLiteral("en-GB")}); }
  ~LocalizationManagerTest() override {
    Bundle::setMain(nullptr);
    UserDefaults::resetStandard();
    LocalizationManager::resetShared();
  }

  /// As at a start of the program with these resources and this desktop's languages.
  static void startWith(const QString& resources, const QStringList& languages) {
    Bundle::setMain(std::make_shared<const Bundle>(resources, languages));
    UserDefaults::resetStandard();
    LocalizationManager::resetShared();
  }

  const testing_support::ScratchHome home;
};

TEST_F(LocalizationManagerTest, followsTheSystemUntilTheUserChooses) {
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system);
  EXPECT_EQ(localized(quit), QStringLiteral("Quit Sorrel"));
  EXPECT_FALSE(UserDefaults::standard().contains(languageKey)) << "reading stores nothing";

  startWith(QStringLiteral(":/sorrel"), {QStringLiteral("fr-FR"), QStringLiteral("ko-KR")});
  EXPECT_EQ(localized(quit), QStringLiteral("Sorrel 종료"));
}

TEST_F(LocalizationManagerTest, aChoiceIsStoredAndOutlivesARestart) {
  auto& manager = LocalizationManager::shared();
  int changes = 0;
  auto token = manager.observe([&] {
    ++changes;
    EXPECT_EQ(manager.language(), AppLanguage::ko);
    EXPECT_EQ(UserDefaults::standard().string(languageKey), QStringLiteral("ko"));
    EXPECT_EQ(localized(quit), QStringLiteral("Sorrel 종료")) << "observers find the new table";
  });
  manager.setLanguage(AppLanguage::ko);
  EXPECT_EQ(changes, 1);
  token.reset();
  manager.setLanguage(AppLanguage::en);
  EXPECT_EQ(changes, 1) << "no token, no call";

  startWith(QStringLiteral(":/sorrel"), {QStringLiteral("ko-KR")});
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::en);
  EXPECT_EQ(localized(quit), QStringLiteral("Quit Sorrel"));
}

TEST_F(LocalizationManagerTest, anUnknownStoredLanguageIsTheSystemsAndStaysStoredUntilTheNextChange) {
  UserDefaults::standard().set(languageKey, QStringLiteral("de"));
  LocalizationManager::resetShared();
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system);
  EXPECT_EQ(UserDefaults::standard().string(languageKey), QStringLiteral("de"));

  LocalizationManager::shared().setLanguage(AppLanguage::system);
  EXPECT_EQ(UserDefaults::standard().string(languageKey), QStringLiteral("system"));

  UserDefaults::standard().set(languageKey, 7);
  LocalizationManager::resetShared();
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::system) << "not even a text";
}

TEST_F(LocalizationManagerTest, settingTheSameLanguageAgainFindsTheTableAnew) {
  startWith(home.path(), {});
  auto& manager = LocalizationManager::shared();
  manager.setLanguage(AppLanguage::ko);
  EXPECT_EQ(manager.bundle(), Bundle::main()) << "no folder yet";

  QDir().mkpath(home.path(QStringLiteral("ko.lproj")));
  UserDefaults::standard().remove(languageKey);
  manager.setLanguage(AppLanguage::ko);
  EXPECT_EQ(manager.bundle()->resourcePath(), home.path(QStringLiteral("ko.lproj")));
  EXPECT_EQ(UserDefaults::standard().string(languageKey), QStringLiteral("ko")) << "written again";
}

TEST_F(LocalizationManagerTest, aMissingLanguageFolderLeavesTheMainBundle) {
  QDir().mkpath(home.path(QStringLiteral("resources/en.lproj")));
  QFile::copy(QStringLiteral(":/sorrel/en.lproj/Localizable.qm"),
              home.path(QStringLiteral("resources/en.lproj/Localizable.qm")));
  startWith(home.path(QStringLiteral("resources")), {QStringLiteral("ko-KR")});
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  EXPECT_EQ(LocalizationManager::shared().language(), AppLanguage::ko);
  EXPECT_EQ(LocalizationManager::shared().bundle(), Bundle::main());
  EXPECT_EQ(localized(quit), QStringLiteral("Quit Sorrel")) << "the system's choice of language";

  startWith(home.path(QStringLiteral("nothing")), {});
  EXPECT_EQ(LocalizationManager::shared().bundle(), Bundle::main()) << "not even English";
  EXPECT_EQ(localized(quit), quit);
}

TEST_F(LocalizationManagerTest, aKeyWithoutATextShowsItself) {
  EXPECT_EQ(localized(QStringLiteral("no.such.key")), QStringLiteral("no.such.key"));
  EXPECT_EQ(localized(QString()), QString());
}

TEST_F(LocalizationManagerTest, theLanguagesAreStoredAndShownUnderTheirNames) {
  QStringList raw;
  QStringList labels;
  for (const AppLanguage language : sorrel::allAppLanguages) {
    raw << sorrel::rawValue(language);
    labels << localized(sorrel::labelKey(language));
  }
  EXPECT_EQ(raw.join(u' '), QStringLiteral("system ko en"));
  EXPECT_EQ(labels.join(u' '), QStringLiteral("System 한국어 English"));
}

}  // namespace
