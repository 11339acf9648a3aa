#include "platform/input/KeyCodes.h"
#include "platform/input/KeyboardLayout.h"
#include "tests/platform/input/X11Fixture.h"

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

using testing_support::setLayout;

TEST(KeyCodes, MapBothWays) {
  int count = 0;
#define EXPECT_BOTH_WAYS(name, virtualCode, evdev)                 \
  EXPECT_EQ(keyCode(evdevCode(virtualCode).value()), virtualCode); \
  ++count;
  PLATFORM_NAMED_KEYS(EXPECT_BOTH_WAYS)
#undef EXPECT_BOTH_WAYS
  EXPECT_EQ(count, 118);
  EXPECT_EQ(evdevCode(500), std::nullopt);
  EXPECT_EQ(evdevCode(qint64{1} << 32), std::nullopt);
  EXPECT_EQ(keyCode(KEY_POWER), std::nullopt);
}

class KeyboardLayoutTest : public ::testing::Test {
 protected:
  ~KeyboardLayoutTest() override { setLayout(u"us"_s); }

  std::string typed(std::initializer_list<int> keyCodes) const {
    QString text;
    for (const int code : keyCodes)
      text +=
          layout->translate(static_cast<quint16>(code)).value_or(KeyboardLayout::Translation{0, u"?"_s}).text;
    return text.toStdString();
  }

  const std::shared_ptr<const KeyboardLayout> layout = KeyboardLayout::forDesktop();
};

TEST_F(KeyboardLayoutTest, PrintsWhatTheUSKeyboardDoes) {
  using namespace KeyCode;
  EXPECT_EQ(typed({a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y, z}),
            "abcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(typed({zero, one, two, three, four, five, six, seven, eight, nine}), "0123456789");
  EXPECT_EQ(typed({backslash, backtick, comma, equal, minus, period, quote, semicolon, slash, leftBracket,
                   rightBracket}),
            "\\`,=-.';/[]");
  EXPECT_NE(layout->translate(capsLock)->status, 0);
  EXPECT_NE(layout->translate(500)->status, 0);
}

TEST_F(KeyboardLayoutTest, FollowsTheLayoutAtOnce) {
  using namespace KeyCode;
  setLayout(u"de"_s);
  EXPECT_EQ(typed({y, z, semicolon, minus}), "zy\u00F6\u00DF");
  EXPECT_EQ(typed({backtick, equal}), "^\u00B4") << "dead keys show their accents";
  setLayout(u"fr"_s);
  EXPECT_EQ(typed({q, a, one, two, leftBracket}), "aq&\u00E9^");
  setLayout(u"kr"_s);
  EXPECT_EQ(typed({a, s, slash}), "as/");
}

TEST_F(KeyboardLayoutTest, LatinLayoutStandsInForOthers) {
  using namespace KeyCode;
  setLayout(u"ru,gr,de"_s);
  EXPECT_EQ(typed({a, y, slash}), "az-");
  testing_support::Screen(testing_support::privateDisplay()).lockGroup(1);
  EXPECT_EQ(typed({a, y}), "az");
  setLayout(u"de,us"_s);
  testing_support::Screen(testing_support::privateDisplay()).lockGroup(1);
  EXPECT_EQ(typed({y}), "y") << "the current group is Latin";
  setLayout(u"ru"_s);
  EXPECT_EQ(typed({a}), "\u0444") << "there is no other";
}

}  // namespace
}  // namespace platform
