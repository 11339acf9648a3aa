#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// A hot key that the desktop or another program keeps for itself: a virtual key code and HotKeyModifiers.
struct SymbolicHotKey {
  bool isEnabled = false;
  qint64 keyCode = 0;
  qint64 modifiers = 0;
  bool operator==(const SymbolicHotKey&) const = default;
};

/// Reads them, anew at each call; none if they can't be read.
using SymbolicHotKeysReader = std::function<std::vector<SymbolicHotKey>()>;

/// What the environment's reader answers; none where it has no reader.
[[nodiscard]] std::vector<SymbolicHotKey> copySymbolicHotKeys();

/// A reader of the settings of the desktop that runs, and of what other programs have taken. Needs a
/// QGuiApplication at each call; nothing is read before.
[[nodiscard]] std::shared_ptr<SymbolicHotKeysReader> symbolicHotKeysOfDesktop();

}  // namespace platform
