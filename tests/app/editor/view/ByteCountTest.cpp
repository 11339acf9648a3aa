#include "app/editor/view/ByteCount.h"
#include "app/settings/LocalizationManager.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;

namespace {

TEST(ByteCount, IsInDecimalUnitsOfTheLanguage) {
  auto& language = LocalizationManager::shared();
  language.setLanguage(AppLanguage::en);
  EXPECT_EQ(fileSizeText(0), u"Zero KB"_s);
  EXPECT_EQ(fileSizeText(1), u"1 byte"_s);
  EXPECT_EQ(fileSizeText(999), u"999 bytes"_s);
  EXPECT_EQ(fileSizeText(245'499), u"245 KB"_s);
  EXPECT_EQ(fileSizeText(999'499), u"999 KB"_s);
  EXPECT_EQ(fileSizeText(999'500), u"1 MB"_s) << "not 1000 KB";
  EXPECT_EQ(fileSizeText(1'449'000), u"1.4 MB"_s);
  EXPECT_EQ(fileSizeText(12'990'000), u"13 MB"_s);
  EXPECT_EQ(fileSizeText(1'234'567'890), u"1.23 GB"_s);
  EXPECT_EQ(fileSizeText(5'000'000'000'000'000), u"5000 TB"_s);
  language.setLanguage(AppLanguage::ko);
  EXPECT_EQ(fileSizeText(0), u"0KB"_s);
  EXPECT_EQ(fileSizeText(1'449'000), u"1.4MB"_s);
  language.setLanguage(AppLanguage::system);
}

}  // namespace
