#include "platform/input/Triggers.h"

#include "platform/input/KeyCodes.h"
#include "platform/input/LatinKeys.h"
#include "platform/system/Xcb.h"

#include <QStringList>

#include <array>
#include <xkbcommon/xkbcommon.h>

namespace platform {
namespace {

/// Control, Option, Shift and Command, in the order in which people write them.
using Words = std::array<const char*, 4>;

constexpr std::array modifierOrder{HotKeyModifier::Control, HotKeyModifier::Option, HotKeyModifier::Shift,
                                   HotKeyModifier::Command};
constexpr HotKeyModifiers known =
    HotKeyModifier::Control | HotKeyModifier::Option | HotKeyModifier::Shift | HotKeyModifier::Command;

/// nullopt where one isn't among the words.
std::optional<QStringList> modifiersOf(const HotKey& hotKey, const Words& words) {
  const auto held = HotKeyModifiers::fromInt(hotKey.modifiers);
  if (held & ~known)
    return std::nullopt;
  QStringList found;
  for (size_t i = 0; i < words.size(); ++i)
    if (held.testFlag(modifierOrder[i]))
      found << QString::fromLatin1(words[i]);
  return found;
}

/// By X's name for the symbol; empty where the key has none.
QString symbolName(const HotKey& hotKey) {
  const Keyboard keyboard = readKeyboardOrStandard();
  const xkb_keysym_t symbol =
      keyboard.keymap ? latinSymbol(keyboard, static_cast<int>(hotKey.keyCode)) : XKB_KEY_NoSymbol;
  std::array<char, 64> name{};
  const int length = symbol == XKB_KEY_NoSymbol ? 0 : xkb_keysym_get_name(symbol, name.data(), name.size());
  return length > 0 ? QString::fromLatin1(name.data()) : QString();
}

QString joined(const std::optional<QStringList>& modifiers, const QString& key) {
  return !modifiers || key.isEmpty() ? QString() : (*modifiers + QStringList{key}).join(u'+');
}

}  // namespace

QString portalTrigger(const HotKey& hotKey) {
  return joined(modifiersOf(hotKey, {"CTRL", "ALT", "SHIFT", "LOGO"}), symbolName(hotKey));
}

QString gnomeAccelerator(const HotKey& hotKey) {
  const auto modifiers = modifiersOf(hotKey, {"<Control>", "<Alt>", "<Shift>", "<Super>"});
  const QString key = symbolName(hotKey);
  return !modifiers || key.isEmpty() ? QString() : modifiers->join(QString()) + key;
}

QString swayCombination(const HotKey& hotKey) {
  const auto code = evdevCode(hotKey.keyCode);
  return joined(modifiersOf(hotKey, {"Control", "Mod1", "Shift", "Mod4"}),
                code ? QString::number(*code + x11KeycodeOffset) : QString());
}

}  // namespace platform
