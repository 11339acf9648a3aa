#pragma once

#include "platform/base/UserDefaults.h"

#include <QMap>
#include <QStringList>

namespace platform {

/// How hot keys come to this program. Some desktops let no program watch keys: there the desktop does that,
/// and tells.
enum class HotKeyWay {
  Grabbed,    // the program takes them from all others by itself
  Undecided,  // the desktop hasn't answered yet
  Portal,     // the desktop gives them; the user chooses them in its settings
  Sway,       // bound in the window manager, which allows that to everybody
  Gnome,      // among the desktop's custom keys, which run this program with an option
  Commands,   // not at all: the user binds commands in whatever way his desktop has
};

/// Whether the user has agreed that this program puts its hot keys into the desktop's own: for the ways Sway
/// and Gnome, where nobody else asks him.
inline constexpr SettingsKey<bool> hotKeysMayBeBound{"hotKeysMayBeBound", false};

/// What is to be told of a way.
struct HotKeyState {
  HotKeyWay way = HotKeyWay::Grabbed;
  /// With Portal: the keys that the desktop has given, in its words, by the hot key's name.
  QMap<QString, QString> triggers;
  /// The names of the hot keys that the desktop has for something else, and that aren't bound therefore.
  QStringList taken;

  bool operator==(const HotKeyState&) const = default;
};

}  // namespace platform
