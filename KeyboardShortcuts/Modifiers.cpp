#include "KeyboardShortcuts/Modifiers.h"

#include "platform/input/HotKeyService.h"

#include <array>

namespace KeyboardShortcuts {
namespace {

using platform::HotKeyModifier;
using platform::ModifierFlag;

struct Modifier {
  ModifierFlag flag;
  HotKeyModifier carbon;
  QStringView symbol;
};

constexpr std::array modifiersInMenuOrder{
    Modifier{ModifierFlag::Control, HotKeyModifier::Control, u"\u2303"},
    Modifier{ModifierFlag::Option, HotKeyModifier::Option, u"\u2325"},
    Modifier{ModifierFlag::Shift, HotKeyModifier::Shift, u"\u21E7"},
    Modifier{ModifierFlag::Command, HotKeyModifier::Command, u"\u2318"},
    Modifier{ModifierFlag::Function, HotKeyModifier::Function, u"\U0001F310\uFE0E"},
};

}  // namespace

qint64 carbon(platform::ModifierFlags flags) {
  qint64 result = 0;
  for (const Modifier& modifier : modifiersInMenuOrder)
    if (flags.testFlag(modifier.flag))
      result |= static_cast<qint64>(modifier.carbon);
  return result;
}

platform::ModifierFlags modifierFlags(qint64 carbon) {
  platform::ModifierFlags result;
  for (const Modifier& modifier : modifiersInMenuOrder)
    result.setFlag(modifier.flag, carbon & static_cast<qint64>(modifier.carbon));
  return result;
}

QString ks_symbolicRepresentation(platform::ModifierFlags flags) {
  QString symbols;
  for (const Modifier& modifier : modifiersInMenuOrder)
    if (flags.testFlag(modifier.flag))
      symbols += modifier.symbol;
  return symbols;
}

}  // namespace KeyboardShortcuts
