#pragma once

#include "platform/input/KeyCodes.h"

#include <QHashFunctions>

namespace KeyboardShortcuts {

/// A position on the keyboard, whatever the layout prints there: a virtual key code. Any number is a legal
/// key; the constants name those that every keyboard calls alike.
struct Key {
  qint64 rawValue = 0;

  constexpr explicit Key(qint64 keyCode) : rawValue(keyCode) {}
  bool operator==(const Key&) const = default;

#define KEYBOARD_SHORTCUTS_KEY(name, virtualCode, evdevCode) static const Key name;
  PLATFORM_NAMED_KEYS(KEYBOARD_SHORTCUTS_KEY)
#undef KEYBOARD_SHORTCUTS_KEY
};

#define KEYBOARD_SHORTCUTS_KEY(name, virtualCode, evdevCode) inline constexpr Key Key::name{virtualCode};
PLATFORM_NAMED_KEYS(KEYBOARD_SHORTCUTS_KEY)
#undef KEYBOARD_SHORTCUTS_KEY

inline size_t qHash(const Key& key, size_t seed = 0) {
  return ::qHash(key.rawValue, seed);
}

}  // namespace KeyboardShortcuts
