#include "KeyboardShortcuts/Modifiers.h"
#include "KeyboardShortcuts/Shortcut.h"
#include "KeyboardShortcuts/SpecialKey.h"
#include "platform/base/Bundle.h"
#include "platform/input/KeyboardLayout.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {
namespace {

using platform::Event;
using platform::EventType;
using platform::ModifierFlag;

TEST(Shortcut, KeepsOnlyTheFiveModifiers) {
  EXPECT_EQ(Shortcut(1, 0x200 | 0x400), Shortcut(1, 0x200));
  EXPECT_EQ(Shortcut(1, -1), Shortcut(1, 0x100 | 0x200 | 0x800 | 0x1000 | 0x20000));
  EXPECT_EQ(Shortcut(Key::s, ModifierFlag::Option | ModifierFlag::Shift), Shortcut(1, 2560));
  EXPECT_EQ(Shortcut(1, 2560).modifiers(), ModifierFlag::Option | ModifierFlag::Shift);
  EXPECT_NE(Shortcut(1, 2560), Shortcut(2, 2560));
}

TEST(Shortcut, IsBuiltFromKeyEventsOnly) {
  const auto flags = ModifierFlag::Function | ModifierFlag::Control;
  EXPECT_EQ(Shortcut::forEvent({EventType::KeyDown, 96, flags}), Shortcut(Key::f5, ModifierFlag::Control));
  EXPECT_EQ(Shortcut::forEvent({EventType::KeyUp, 96, {}}), Shortcut(Key::f5, {}));
  EXPECT_EQ(Shortcut::forEvent({EventType::LeftMouseUp, 96, flags}), std::nullopt);
  EXPECT_EQ(Shortcut::forEvent({EventType::FlagsChanged, 96, flags}), std::nullopt);
}

TEST(Shortcut, StoredFormReadsBack) {
  for (const Shortcut& shortcut : {Shortcut(1, 2560), Shortcut(500, 0), Shortcut(-1, 0x20000),
                                   Shortcut(std::numeric_limits<qint64>::max(), 0)})
    EXPECT_EQ(Shortcut::decode(shortcut.encoded()), shortcut) << qPrintable(shortcut.encoded());
  EXPECT_EQ(Shortcut::decode(QStringLiteral(R"( {"carbonModifiers":2560,"other":[],"carbonKeyCode":1} )")),
            Shortcut(1, 2560));
}

TEST(Shortcut, OtherStoredTextsAreNoShortcut) {
  for (const char* text :
       {"", "nonsense", "[1,2560]", "1", "null", R"({"carbonKeyCode":1})", R"({"carbonModifiers":0})",
        R"({"carbonKeyCode":"1","carbonModifiers":0})", R"({"carbonKeyCode":1.5,"carbonModifiers":0})",
        R"({"carbonKeyCode":true,"carbonModifiers":0})", R"({"carbonKeyCode":1,"carbonModifiers":null})",
        R"({"carbonKeyCode":1e300,"carbonModifiers":0})", R"({"carbonKeyCode":1,"carbonModifiers":0)"})
    EXPECT_EQ(Shortcut::decode(QString::fromUtf8(text)), std::nullopt) << text;
}

class Layout : public platform::KeyboardLayout {
 public:
  std::optional<Translation> answer;
  std::optional<Translation> translate(quint16) const override { return answer; }
};

class NamingTest : public ::testing::Test {
 protected:
  NamingTest() { platform::KeyboardLayout::setCurrent(layout); }
  ~NamingTest() override { platform::KeyboardLayout::setCurrent(nullptr); }

  void print(const char* text) { layout->answer = {0, QString::fromUtf8(text)}; }
  static std::string shown(const Shortcut& shortcut) {
    return shortcut.presentableDescription().toStdString();
  }
  static std::string inMenu(const Shortcut& shortcut) {
    return shortcut.nsMenuItemKeyEquivalent().value_or(QStringLiteral("none")).toStdString();
  }

  std::shared_ptr<Layout> layout = std::make_shared<Layout>();
  const Shortcut shortcut{Key::s, ModifierFlag::Option | ModifierFlag::Shift};
};

TEST_F(NamingTest, LayoutGivesTheCharacter) {
  print("s");
  EXPECT_EQ(shown(shortcut), "\u2325\u21E7S");
  EXPECT_EQ(inMenu(shortcut), "s");
  print("\u00DF");
  EXPECT_EQ(shown(shortcut), "\u2325\u21E7Ss");
  print("\U00010428");  // two code units that are one letter
  EXPECT_EQ(shown(shortcut), "\u2325\u21E7\U00010400");
  print("e\u0301");  // two code points that are one character
  EXPECT_EQ(inMenu(shortcut), "e\u0301");
}

TEST_F(NamingTest, KeyWithoutACharacterIsMarked) {
  const auto expectNone = [](const Shortcut& any) {
    EXPECT_EQ(shown(any), ks_symbolicRepresentation(any.modifiers()).toStdString() + "\uFFFD");
    EXPECT_EQ(inMenu(any), "none");
  };
  expectNone(shortcut);  // no layout data
  print("");
  expectNone(shortcut);
  print("ab");
  expectNone(shortcut);
  layout->answer = {-1, QStringLiteral("s")};
  expectNone(shortcut);
  print("s");
  expectNone(Shortcut(-1, 2560));
  expectNone(Shortcut(65536, 2560));
  platform::KeyboardLayout::setCurrent(nullptr);
  expectNone(shortcut);
}

TEST_F(NamingTest, SpecialKeysDontAskTheLayout) {
  print("x");
  EXPECT_EQ(keyToSpecialKeyMapping().size(), 53);
  EXPECT_EQ(shown({Key::upArrow, ModifierFlag::Control | ModifierFlag::Command | ModifierFlag::Function}),
            "\u2303\u2318\U0001F310\uFE0E\u2191");
  EXPECT_EQ(shown({Key::f1, {}}), "F1");
  EXPECT_EQ(inMenu({Key::f1, {}}), "\uF704");
  EXPECT_EQ(shown({Key::f20, {}}), "F20");
  EXPECT_EQ(inMenu({Key::f20, {}}), "\uF717");
  EXPECT_EQ(shown({Key::keypad5, {}}), "5\u20E3");
  EXPECT_EQ(inMenu({Key::keypad5, {}}), "none");
  EXPECT_EQ(inMenu({Key::space, {}}), " ");
  platform::Bundle::setMain(std::make_shared<const platform::Bundle>(QStringLiteral(":/sorrel"),
                                                                     QStringList{QStringLiteral("ko-KR")}));
  EXPECT_EQ(shown({Key::space, ModifierFlag::Control}), "\u2303스페이스");
  platform::Bundle::setMain(nullptr);
}

}  // namespace
}  // namespace KeyboardShortcuts
