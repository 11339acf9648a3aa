#include "platform/base/Bundle.h"
#include "tests/support/ScratchHome.h"

#include <QDir>

#include <gtest/gtest.h>

using platform::Bundle;

namespace {

class BundleTest : public testing::Test {
 protected:
  ~BundleTest() override { Bundle::setMain(nullptr); }

  void makeFolders(const QStringList& names) const {
    for (const QString& name : names)
      QDir().mkpath(home.path(name));
  }
  QStringList preferred(const QStringList& languages) const {
    return Bundle(home.path(), languages).preferredLocalizations();
  }

  const testing_support::ScratchHome home;
};

TEST_F(BundleTest, preferredLocalizationsAreTheUsersLanguagesThatHaveAFolder) {
  const QString ko = QStringLiteral("ko");
  const QString en = QStringLiteral("en");
  EXPECT_TRUE(preferred({ko}).isEmpty()) << "no folder at all";

  makeFolders({QStringLiteral("ko.lproj"), QStringLiteral("en.lproj"), QStringLiteral("pt-BR.lproj")});
  EXPECT_EQ(preferred({QStringLiteral("ko-KR"), ko, QStringLiteral("ko-Kore-KR")}), QStringList{ko});
  EXPECT_EQ(preferred({QStringLiteral("de-DE"), QStringLiteral("en-US"), QStringLiteral("ko-KR")}),
            (QStringList{en, ko}));
  EXPECT_EQ(preferred({QStringLiteral("pt-BR")}), QStringList{QStringLiteral("pt-BR")});
  EXPECT_EQ(preferred({QStringLiteral("kok-IN"), QStringLiteral("C")}), QStringList{en}) << "last resort";
  EXPECT_EQ(preferred({}), QStringList{en});
}

TEST_F(BundleTest, findsItsResourcesAndNothingElse) {
  home.write(QStringLiteral("ko.lproj/note.txt"));
  const Bundle bundle(home.path(), {});
  EXPECT_EQ(bundle.pathForResource(QStringLiteral("ko"), QStringLiteral("lproj")),
            home.path(QStringLiteral("ko.lproj")));
  EXPECT_TRUE(bundle.pathForResource(QStringLiteral("en"), QStringLiteral("lproj")).isEmpty());

  EXPECT_EQ(Bundle::withPath(home.path(QStringLiteral("en.lproj"))), nullptr);
  EXPECT_EQ(Bundle::withPath(home.path(QStringLiteral("ko.lproj/note.txt"))), nullptr) << "not a folder";
}

TEST_F(BundleTest, aMissingOrBrokenTableGivesTheFallBack) {
  makeFolders({QStringLiteral("en.lproj")});
  home.write(QStringLiteral("ko.lproj/Localizable.qm"), "not a table");
  Bundle::setMain(std::make_shared<const Bundle>(home.path(), QStringList{QStringLiteral("ko")}));
  for (const char* folder : {"", "/ko.lproj", "/en.lproj"}) {
    const auto bundle = Bundle::withPath(home.path() + QString::fromLatin1(folder));
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->localizedString(QStringLiteral("menu.quit"), QStringLiteral("fall-back")),
              QStringLiteral("fall-back"));
  }
}

}  // namespace
