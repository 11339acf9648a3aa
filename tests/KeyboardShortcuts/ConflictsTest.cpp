#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/Conflicts.h"
#include "platform/base/Environment.h"
#include "platform/base/Menu.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/input/SymbolicHotKeys.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {
namespace {

using namespace Qt::StringLiterals;
using platform::Menu;
using platform::MenuItem;
using platform::ModifierFlag;
using platform::ModifierFlags;

/// Prints an "s" on every key.
class LayoutOfS : public platform::KeyboardLayout {
  std::optional<Translation> translate(quint16) const override { return Translation{0, u"s"_s}; }
};

MenuItem item(const char* keyEquivalent, ModifierFlags mask, std::shared_ptr<Menu> submenu = nullptr) {
  MenuItem result;
  result.keyEquivalent = QString::fromUtf8(keyEquivalent);
  result.keyEquivalentModifierMask = mask;
  result.submenu = std::move(submenu);
  return result;
}

const ModifierFlags command = ModifierFlag::Command;
const ModifierFlags shiftCommand = ModifierFlag::Command | ModifierFlag::Shift;

TEST(MenuConflict, ComparesTextAndModifiers) {
  struct {
    Shortcut shortcut;
    MenuItem item;
    bool isTaken;
  } const rows[] = {
      {{Key::s, command}, item("s", command), true},
      {{Key::s, command | ModifierFlag::Option}, item("s", command), false},
      {{Key::s, shiftCommand}, item("S", command), true},
      {{Key::s, command}, item("S", command), false},
      {{Key::keypad5, command}, item("", command), false},
  };
  platform::Environment::provide<const platform::KeyboardLayout>(std::make_shared<const LayoutOfS>());
  for (const auto& row : rows)
    EXPECT_EQ(menuItemWithMatchingShortcut(row.shortcut, Menu{{row.item}}) != nullptr, row.isTaken)
        << &row - rows;
  platform::Environment::provide<const platform::KeyboardLayout>(nullptr);
}

TEST(SystemConflict, ReadsEnabledEntriesAnew) {
  EXPECT_TRUE(CarbonKeyboardShortcuts::system().isEmpty());
  std::vector<platform::SymbolicHotKey> answer;
  platform::Environment::provide(std::make_shared<platform::SymbolicHotKeysReader>([&] { return answer; }));
  EXPECT_TRUE(CarbonKeyboardShortcuts::system().isEmpty());
  answer = {{true, 1, 2560 | 0x400}, {false, 2, 256}, {true, 111, 0}};
  EXPECT_EQ(CarbonKeyboardShortcuts::system(), (QList<Shortcut>{Shortcut(1, 2560), Shortcut(111, 0)}));
  EXPECT_TRUE(isTakenBySystem(Shortcut(1, 2560)));
  EXPECT_FALSE(isTakenBySystem(Shortcut(Key::f12, {})));
  platform::Environment::provide<platform::SymbolicHotKeysReader>(nullptr);
}

}  // namespace
}  // namespace KeyboardShortcuts
