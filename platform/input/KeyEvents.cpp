#include "platform/input/KeyEvents.h"

#include "platform/input/KeyCodes.h"
#include "platform/x11/X11Connection.h"

#include <QKeyEvent>

namespace platform {
namespace {

/// One that changes the layout while a modifier is down, as Shift may do beside Alt, has no name of its own.
bool isModifierPosition(int code) {
  switch (code) {
    case KeyCode::capsLock:
    case KeyCode::shift:
    case KeyCode::rightShift:
    case KeyCode::control:
    case KeyCode::rightControl:
    case KeyCode::option:
    case KeyCode::rightOption:
    case KeyCode::command:
    case KeyCode::rightCommand:
    case KeyCode::function:
      return true;
    default:
      return false;
  }
}

bool isModifier(int key, int code) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Mode_switch:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    case 0:
    case Qt::Key_unknown:
      return isModifierPosition(code);
    default:
      return false;
  }
}

}  // namespace

Event eventFrom(const QKeyEvent& event) {
  // Other window systems than X count keys in the same way.
  const int position = static_cast<int>(event.nativeScanCode()) - x11KeycodeOffset;
  const int code = keyCode(position).value_or(noKeyCode);
  ModifierFlags flags;
  flags.setFlag(ModifierFlag::Shift, event.modifiers() & Qt::ShiftModifier);
  flags.setFlag(ModifierFlag::Control, event.modifiers() & Qt::ControlModifier);
  flags.setFlag(ModifierFlag::Option, event.modifiers() & Qt::AltModifier);
  flags.setFlag(ModifierFlag::Command, event.modifiers() & Qt::MetaModifier);
  if (isModifier(event.key(), code))
    return {EventType::FlagsChanged, code, flags};
  const bool isPossible = !(event.modifiers() & Qt::GroupSwitchModifier);
  return {event.type() == QEvent::KeyPress ? EventType::KeyDown : EventType::KeyUp,
          isPossible ? code : noKeyCode, flags};
}

}  // namespace platform
