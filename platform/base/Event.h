#pragma once

#include <QFlags>

namespace platform {

/// The five modifiers a shortcut may have, as flags of an event. Other bits (caps lock, device bits) may be
/// set in an event and are ignored by whoever compares.
enum class ModifierFlag : quint32 {
  Shift = 0x20000,
  Control = 0x40000,
  Option = 0x80000,
  Command = 0x100000,
  Function = 0x800000,
};
Q_DECLARE_FLAGS(ModifierFlags, ModifierFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(ModifierFlags)

/// The number of a type is its bit in an event mask.
enum class EventType : int {
  LeftMouseDown = 1,
  LeftMouseUp = 2,
  RightMouseDown = 3,
  RightMouseUp = 4,
  MouseMoved = 5,
  KeyDown = 10,
  KeyUp = 11,
  FlagsChanged = 12,
};

/// One event of the user's, without its window. `keyCode` is a virtual key code (a position on the keyboard,
/// see platform/input/KeyCodes.h) and means something for key events only.
struct Event {
  EventType type = EventType::MouseMoved;
  int keyCode = 0;
  ModifierFlags modifierFlags;

  bool operator==(const Event&) const = default;
};

}  // namespace platform
