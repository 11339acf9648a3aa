#include "KeyboardShortcuts/recorder/RecorderRules.h"
#include "platform/base/Environment.h"
#include "platform/base/Menu.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/input/SymbolicHotKeys.h"
#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {
namespace {

using namespace Qt::StringLiterals;
using platform::ModifierFlags;
using enum RecorderAction;
using enum KeyMeaning;

constexpr auto shift = platform::ModifierFlag::Shift;
constexpr auto control = platform::ModifierFlag::Control;
constexpr auto option = platform::ModifierFlag::Option;
constexpr auto command = platform::ModifierFlag::Command;
constexpr auto function = platform::ModifierFlag::Function;

RecorderEvent press(Key key, ModifierFlags modifiers = {}, KeyMeaning meaning = Other) {
  return {{platform::EventType::KeyDown, static_cast<int>(key.rawValue), modifiers}, meaning, {}};
}

TEST(RecorderRules, KeysDecide) {
  const Key noKey(-1);
  struct {
    RecorderEvent event;
    RecorderAction action;
  } const rows[] = {
      {press(Key::tab, {}, Tab), EndAndPass},
      {press(Key::tab, shift), Beep},
      {press(Key::tab, control, Tab), Save},
      {press(Key::escape, {}, Escape), End},
      {press(Key::escape, shift, Escape), Beep},
      {press(Key::escape, option, Escape), Save},
      {press(Key::capsLock, {}, Escape), End},  // where the user's layout has it
      {press(Key::delete_, {}, Delete), Clear},
      {press(Key::deleteForward, {}, Delete), Clear},
      {press(Key::delete_, shift, Delete), Beep},
      {press(Key::delete_, command, Delete), Save},
      {press(Key::a), Beep},
      {press(Key::seven), Beep},
      {press(Key::slash), Beep},
      {press(Key::space), Beep},
      {press(Key::leftArrow, function), Beep},
      {press(Key::keypad5), Beep},
      {press(Key::a, shift), Beep},
      {press(Key::home, shift | function), Beep},
      {press(Key::volumeUp), Beep},
      {press(Key::f1), Save},
      {press(Key::f20), Save},
      {press(Key::printScreen), Save},
      {press(Key::scrollLock, shift), Save},
      {press(Key::contextMenu), Beep},
      {press(Key::contextMenu, control), Save},
      {press(Key::isoKey, shift), Beep},
      {press(Key::f5, shift), Save},
      {press(Key::f5, function), Save},
      {press(Key::f12, shift | function), Save},
      {press(Key::a, command), Save},
      {press(Key::a, option), Save},
      {press(Key::a, option | shift), Save},
      {press(Key::space, control | function), Save},
      {press(noKey), Beep},
      {press(noKey, control), Beep},
  };
  for (const auto& row : rows) {
    const RecorderDecision decision = decide(row.event, {});
    EXPECT_EQ(decision.action, row.action) << &row - rows;
    EXPECT_EQ(decision.shortcut, row.action == Save ? Shortcut::forEvent(row.event.event) : std::nullopt);
  }
  EXPECT_EQ(decide(press(Key::f5, function), {}).shortcut, Shortcut(Key::f5, {}));
}

TEST(RecorderRules, ClicksEndItBeyondTheFieldsSurroundings) {
  const RecorderContext context{{100, 50, 130, 24}, nullptr, {}};
  const std::pair<QPointF, RecorderAction> rows[] = {
      {{150, 60}, Drop},      {{97, 47}, Drop},        {{233, 77}, Drop},
      {{96, 60}, EndAndPass}, {{234, 60}, EndAndPass}, {{150, 78}, EndAndPass},
  };
  for (const auto& [location, action] : rows)
    for (const auto type : {platform::EventType::LeftMouseUp, platform::EventType::RightMouseUp})
      EXPECT_EQ(decide({{type, 0, {}}, Other, location}, context).action, action)
          << location.x() << ' ' << location.y();
  for (const auto type :
       {platform::EventType::LeftMouseDown, platform::EventType::KeyUp, platform::EventType::FlagsChanged})
    EXPECT_EQ(decide({{type, Key::a.rawValue, command}, Other, {}}, context).action, PassOn);
}

class LayoutOfS : public platform::KeyboardLayout {
  std::optional<Translation> translate(quint16) const override { return Translation{0, u"s"_s}; }
};

/// Each conflict in its turn: what an earlier one has decided isn't asked of a later one.
TEST(RecorderRules, ConflictsDecideInTheirOrder) {
  const testing_support::ScratchHome home;
  platform::Environment::provide<const platform::KeyboardLayout>(std::make_shared<const LayoutOfS>());
  const qint64 f12 = Key::f12.rawValue, s = Key::s.rawValue;
  std::vector<platform::SymbolicHotKey> taken{{true, f12, 0}, {true, f12, 512}, {true, s, 2048}};
  int questions = 0;
  platform::Environment::provide(std::make_shared<platform::SymbolicHotKeysReader>([&] {
    ++questions;
    return taken;
  }));
  platform::Menu menu;
  for (const auto modifier : {command, option}) {
    platform::MenuItem item;
    item.title = modifier == command ? u"Save"_s : u"Set Aside"_s;
    item.keyEquivalent = u"s"_s;
    item.keyEquivalentModifierMask = modifier;
    menu.items.push_back(item);
  }
  RecorderContext context{{}, &menu, {{15, 1}, true}};
  for (const auto modifier : {command, control})
    EXPECT_EQ(decide(press(Key::s, modifier), context), (RecorderDecision{RefuseForMenu, {}, u"Save"_s}));
  EXPECT_EQ(decide(press(Key::s, option), context), (RecorderDecision{RefuseForMenu, {}, u"Set Aside"_s}));
  const RecorderContext withoutMenu{{}, nullptr, context.surroundings};
  EXPECT_EQ(decide(press(Key::s, option), withoutMenu), (RecorderDecision{RefuseDisallowed, {}, {}}));
  EXPECT_EQ(questions, 0);
  EXPECT_EQ(decide(press(Key::s, command | control), context).action, Save);
  questions = 0;
  context.mainMenu = nullptr;
  context.surroundings.version.minor = 2;
  EXPECT_EQ(decide(press(Key::s, option), context),
            (RecorderDecision{AskWhetherToForce, Shortcut(Key::s, option), {}}));
  EXPECT_EQ(decide(press(Key::f12, shift), context).action, AskWhetherToForce);
  EXPECT_EQ(decide(press(Key::f12), context).action, Save);
  EXPECT_EQ(questions, 2);
}

}  // namespace
}  // namespace KeyboardShortcuts
