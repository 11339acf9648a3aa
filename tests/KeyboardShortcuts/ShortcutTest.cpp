#include "KeyboardShortcuts/Shortcut.h"
#include "platform/base/Bundle.h"
#include "platform/base/Environment.h"
#include "platform/input/KeyboardLayout.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {
namespace {

using namespace Qt::StringLiterals;
using platform::Event;
using platform::EventType;
using platform::ModifierFlag;

TEST(Shortcut, StoredFormReadsBackAndOtherTextsAreNoShortcut) {
  for (const Shortcut& shortcut :
       {Shortcut(1, 2560), Shortcut(-1, 0x20000), Shortcut(std::numeric_limits<qint64>::max(), 0)})
    EXPECT_EQ(Shortcut::decode(shortcut.encoded()), shortcut) << qPrintable(shortcut.encoded());
  EXPECT_EQ(Shortcut::decode(uR"( {"carbonModifiers":2560,"other":[],"carbonKeyCode":1} )"_s),
            Shortcut(1, 2560));
  for (const char* text :
       {"", "nonsense", "[1,2560]", "1", "null", R"({"carbonKeyCode":1})", R"({"carbonModifiers":0})",
        R"({"carbonKeyCode":"1","carbonModifiers":0})", R"({"carbonKeyCode":1.5,"carbonModifiers":0})",
        R"({"carbonKeyCode":true,"carbonModifiers":0})", R"({"carbonKeyCode":1,"carbonModifiers":null})",
        R"({"carbonKeyCode":1e300,"carbonModifiers":0})", R"({"carbonKeyCode":1,"carbonModifiers":0)"})
    EXPECT_EQ(Shortcut::decode(QString::fromUtf8(text)), std::nullopt) << text;
}

/// A keyboard on which every key prints the same.
class Layout : public platform::KeyboardLayout {
 public:
  explicit Layout(std::optional<Translation> every = {}) : answer(std::move(every)) {}

 private:
  std::optional<Translation> translate(quint16) const override { return answer; }
  const std::optional<Translation> answer;
};

/// How a shortcut is shown, and its key equivalent in a menu, where every key prints `text`.
QString named(const Shortcut& shortcut, const std::optional<QString>& text, int status = 0) {
  platform::Environment::provide<const platform::KeyboardLayout>(std::make_shared<const Layout>(
      text ? std::optional(Layout::Translation{status, *text}) : std::nullopt));
  const QString result =
      shortcut.presentableDescription() + u" | "_s + shortcut.nsMenuItemKeyEquivalent().value_or(u"none"_s);
  platform::Environment::provide<const platform::KeyboardLayout>(nullptr);
  return result;
}

TEST(ShortcutNaming, LayoutGivesTheCharacter) {
  const Shortcut shortcut(Key::s, ModifierFlag::Option | ModifierFlag::Shift);
  EXPECT_EQ(named(shortcut, u"s"_s), u"⌥⇧S | s"_s);
  EXPECT_EQ(named(shortcut, u"ß"_s), u"⌥⇧Ss | ß"_s);
  EXPECT_EQ(named(shortcut, u"\U00010428"_s), u"⌥⇧\U00010400 | \U00010428"_s) << "two code units, one letter";
  EXPECT_TRUE(named(shortcut, u"e\u0301"_s).endsWith(u"| e\u0301"_s)) << "two code points, one character";
  const QString none = u"⌥⇧\uFFFD | none"_s;
  EXPECT_EQ(named(shortcut, std::nullopt), none);
  EXPECT_EQ(named(shortcut, u"ab"_s), none);
  EXPECT_EQ(named(shortcut, u"s"_s, -1), none);
  EXPECT_EQ(named({-1, 2560}, u"s"_s), none);
  EXPECT_EQ(shortcut.presentableDescription(), u"⌥⇧\uFFFD"_s) << "no layout at all";
}

TEST(ShortcutNaming, SpecialKeysDontAskTheLayout) {
  const auto all = ModifierFlag::Control | ModifierFlag::Command | ModifierFlag::Function;
  EXPECT_TRUE(named({Key::upArrow, all}, u"x"_s).startsWith(u"⌃⌘\U0001F310\uFE0E↑ "_s));
  EXPECT_EQ(named({Key::f20, {}}, u"x"_s), u"F20 | \uF717"_s);
  EXPECT_EQ(named({Key::keypad5, {}}, u"x"_s), u"5\u20E3 | none"_s);
  platform::Environment::provide(
      std::make_shared<const platform::Bundle>(u":/sorrel"_s, QStringList{u"ko-KR"_s}));
  EXPECT_EQ(named({Key::space, ModifierFlag::Control}, u"x"_s), u"⌃스페이스 |  "_s);
  EXPECT_EQ(named({Key::contextMenu, ModifierFlag::Control}, u"x"_s), u"⌃메뉴 | none"_s);
  platform::Environment::provide<const platform::Bundle>(nullptr);
}

}  // namespace
}  // namespace KeyboardShortcuts
