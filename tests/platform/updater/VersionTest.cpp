#include "platform/updater/Version.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Version;

namespace {

TEST(VersionTest, OrdersByTheirNumbersThenByTheirPreReleases) {
  // From the oldest to the newest; those of one line are the same.
  const std::vector<QStringList> ascending{
      {u"0.1.0-alpha"_s},
      {u"0.1"_s, u"0.1.0"_s, u"0.1.0.0"_s},
      {u"0.1.0.1"_s},
      {u"1.9"_s},
      {u"1.10-1"_s},
      {u"1.10-2"_s},
      {u"1.10-10"_s},
      {u"1.10-99999999999999999999"_s},
      {u"1.10-Beta"_s},
      {u"1.10-alpha"_s, u"1.10.0-alpha"_s},
      {u"1.10-alpha.1"_s},
      {u"1.10-alpha.1.0"_s},
      {u"1.10-alpha.beta"_s},
      {u"1.10-beta.2"_s},
      {u"1.10-beta.11"_s},
      {u"1.10-rc1"_s},
      {u"1.10"_s, u"1.10.0"_s},
      {u"1.10.0.1-rc"_s},
      {u"1.10.1"_s},
      {u"2"_s},
      {u"999999999"_s},
  };
  for (size_t left = 0; left < ascending.size(); ++left)
    for (size_t right = 0; right < ascending.size(); ++right)
      for (const QString& first : ascending[left])
        for (const QString& second : ascending[right]) {
          const auto one = Version::parse(first), other = Version::parse(second);
          ASSERT_TRUE(one && other) << qPrintable(first) << ' ' << qPrintable(second);
          EXPECT_EQ(*one <=> *other, left <=> right) << qPrintable(first) << ' ' << qPrintable(second);
        }
}

TEST(VersionTest, RefusesWhatIsNone) {
  const QStringList junk{u""_s,           u" 1.0"_s,       u"1.0 "_s,
                         u"1.0\n"_s,      u"v1.0"_s,       u"1."_s,
                         u".1"_s,         u"1..0"_s,       u"-1"_s,
                         u"1.0-"_s,       u"1.0-a..b"_s,   u"1.0-01"_s,
                         u"1.0-a_b"_s,    u"1.0+2"_s,      u"1,0"_s,
                         u"01.0"_s,       u"1.00"_s,       u"1.0x1"_s,
                         u"1.2.3.4.5"_s,  u"one"_s,        u"1.-1"_s,
                         u"1.0-a."_s,     u"1e5"_s,        u"\u0661.0"_s,
                         u"1.0-\u00e4"_s, u"1234567890"_s, u"1.0-"_s + QString(61, u'a')};
  for (const QString& text : junk)
    EXPECT_FALSE(Version::parse(text)) << qPrintable(text);
}

}  // namespace
