#include "KeyboardShortcuts/recorder/RecorderRules.h"

#include "KeyboardShortcuts/SpecialKey.h"
#include "platform/base/Menu.h"

namespace KeyboardShortcuts {
namespace {

using platform::ModifierFlag;
using platform::ModifierFlags;
using enum RecorderAction;

constexpr qreal clickMargin = 3;  // a click as near as this is one on the field

bool isFunctionKey(Key key) {
  if (key == Key::printScreen || key == Key::scrollLock || key == Key::pause)
    return true;  // where other keyboards have F13 to F15
  constexpr QChar f1(0xF704), f35(0xF726);
  const auto equivalent = keyToSpecialKeyMapping().value(key).appKitMenuItemKeyEquivalent;
  return equivalent && equivalent->size() == 1 && equivalent->front() >= f1 && equivalent->front() <= f35;
}

/// A menu's Command is pressed as Control on this desktop, or as the logo key.
Shortcut asMenusHaveIt(const Shortcut& shortcut) {
  ModifierFlags modifiers = shortcut.modifiers();
  if (modifiers.testFlag(ModifierFlag::Control) && !modifiers.testFlag(ModifierFlag::Command))
    modifiers.setFlag(ModifierFlag::Control, false).setFlag(ModifierFlag::Command);
  return {shortcut.key(), modifiers};
}

const platform::MenuItem* itemFor(const Shortcut& shortcut, const platform::Menu& menu) {
  const auto* const item = menuItemWithMatchingShortcut(shortcut, menu);
  return item ? item : menuItemWithMatchingShortcut(asMenusHaveIt(shortcut), menu);
}

RecorderDecision afterClick(const QPointF& location, const QRectF& bounds) {
  const bool isInside =
      bounds.adjusted(-clickMargin, -clickMargin, clickMargin, clickMargin).contains(location);
  return {isInside ? Drop : EndAndPass, {}, {}};
}

RecorderDecision afterChord(const platform::Event& event, const RecorderContext& context) {
  ModifierFlags modifiers = event.modifierFlags;
  modifiers.setFlag(ModifierFlag::Shift, false);
  modifiers.setFlag(ModifierFlag::Function, false);
  const std::optional<Shortcut> shortcut = Shortcut::forEvent(event);
  if (!shortcut || (!modifiers && !isFunctionKey(shortcut->key())))
    return {Beep, {}, {}};
  if (context.mainMenu)
    if (const auto* const item = itemFor(*shortcut, *context.mainMenu))
      return {RefuseForMenu, {}, item->title};
  if (isDisallowed(*shortcut, context.surroundings))
    return {RefuseDisallowed, {}, {}};
  return {isTakenBySystem(*shortcut) ? AskWhetherToForce : Save, shortcut, {}};
}

}  // namespace

RecorderDecision decide(const RecorderEvent& event, const RecorderContext& context) {
  switch (event.event.type) {
    case platform::EventType::LeftMouseUp:
    case platform::EventType::RightMouseUp:
      return afterClick(event.location, context.bounds);
    case platform::EventType::KeyDown:
      break;
    default:
      return {PassOn, {}, {}};
  }
  if (!event.event.modifierFlags) {
    switch (event.meaning) {
      case KeyMeaning::Tab:
        return {EndAndPass, {}, {}};
      case KeyMeaning::Escape:
        return {End, {}, {}};
      case KeyMeaning::Delete:
        return {Clear, {}, {}};
      case KeyMeaning::Other:
        break;
    }
  }
  return afterChord(event.event, context);
}

}  // namespace KeyboardShortcuts
