#include "KeyboardShortcuts/Conflicts.h"

#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "platform/base/Menu.h"

namespace KeyboardShortcuts {
namespace {

using platform::ModifierFlag;
using platform::ModifierFlags;

/// The chord as a menu knows it.
struct MenuChord {
  QString keyEquivalent;
  ModifierFlags modifiers;
};

bool matches(const platform::MenuItem& item, const MenuChord& chord) {
  QString keyEquivalent = item.keyEquivalent;
  ModifierFlags mask = item.keyEquivalentModifierMask;
  // A capital in a menu is the key with shift.
  if (chord.modifiers.testFlag(ModifierFlag::Shift) && keyEquivalent != keyEquivalent.toLower()) {
    keyEquivalent = keyEquivalent.toLower();
    mask |= ModifierFlag::Shift;
  }
  return keyEquivalent == chord.keyEquivalent && mask == chord.modifiers;
}

const platform::MenuItem* firstMatch(const platform::Menu& menu, const MenuChord& chord) {
  for (const platform::MenuItem& item : menu.items) {
    if (matches(item, chord))
      return &item;
    if (item.submenu)
      if (const auto* const found = firstMatch(*item.submenu, chord))
        return found;
  }
  return nullptr;
}

}  // namespace

bool Constants::isSandboxed() {
  static const bool answer = qEnvironmentVariableIsSet("APP_SANDBOX_CONTAINER_ID");
  return answer;
}

const platform::MenuItem* menuItemWithMatchingShortcut(const Shortcut& shortcut, const platform::Menu& menu) {
  const std::optional<QString> keyEquivalent = shortcut.nsMenuItemKeyEquivalent();
  return keyEquivalent ? firstMatch(menu, {*keyEquivalent, shortcut.modifiers()}) : nullptr;
}

bool isTakenBySystem(const Shortcut& shortcut) {
  return shortcut != Shortcut(Key::f12, {}) && CarbonKeyboardShortcuts::system().contains(shortcut);
}

bool isDisallowed(const Shortcut& shortcut, const Surroundings& surroundings) {
  const bool isAffectedVersion = surroundings.version.major == 15 && surroundings.version.minor <= 1;
  ModifierFlags besidesShift = shortcut.modifiers();
  besidesShift.setFlag(ModifierFlag::Shift, false);
  return isAffectedVersion && surroundings.isSandboxed && besidesShift == ModifierFlags(ModifierFlag::Option);
}

}  // namespace KeyboardShortcuts
