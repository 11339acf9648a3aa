#include "platform/base/Bundle.h"
#include "tests/support/ScratchHome.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Bundle;

namespace {

TEST(BundleTest, preferredLocalizationsAreTheUsersLanguagesThatHaveAFolder) {
  const testing_support::ScratchHome home;
  const auto preferred = [&](const QString& languages) {
    return Bundle(home.path(), languages.split(u' ', Qt::SkipEmptyParts)).preferredLocalizations().join(u' ');
  };
  EXPECT_EQ(preferred(u"ko"_s), QString()) << "no folder at all";
  for (const QString& name : {u"ko.lproj"_s, u"en.lproj"_s, u"pt-BR.lproj"_s})
    QDir().mkpath(home.path(name));
  EXPECT_EQ(preferred(u"ko-KR ko ko-Kore-KR"_s), u"ko"_s);
  EXPECT_EQ(preferred(u"de-DE en-US ko-KR"_s), u"en ko"_s);
  EXPECT_EQ(preferred(u"pt-BR"_s), u"pt-BR"_s);
  EXPECT_EQ(preferred(u"kok-IN C"_s), u"en"_s) << "last resort";
  EXPECT_EQ(preferred(QString()), u"en"_s);
}

TEST(BundleTest, whatIsMissingOrBrokenGivesTheFallBack) {
  const testing_support::ScratchHome home;
  home.write(u"ko.lproj/Localizable.qm"_s, "not a table");
  QDir().mkpath(home.path(u"en.lproj"_s));
  const Bundle bundle(home.path(), {});
  EXPECT_EQ(bundle.pathForResource(u"ko"_s, u"lproj"_s), home.path(u"ko.lproj"_s));
  EXPECT_TRUE(bundle.pathForResource(u"fr"_s, u"lproj"_s).isEmpty());
  EXPECT_EQ(Bundle::withPath(home.path(u"fr.lproj"_s)), nullptr);
  EXPECT_EQ(Bundle::withPath(home.path(u"ko.lproj/Localizable.qm"_s)), nullptr) << "not a folder";

  platform::Environment::provide(std::make_shared<const Bundle>(home.path(), QStringList{u"ko"_s}));
  for (const QString& folder : {home.path(), home.path(u"ko.lproj"_s), home.path(u"en.lproj"_s)})
    EXPECT_EQ(Bundle::withPath(folder)->localizedString(u"menu.quit"_s, u"fall-back"_s), u"fall-back"_s);
}

}  // namespace
