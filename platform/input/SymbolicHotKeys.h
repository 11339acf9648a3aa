#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

namespace platform {

/// A hot key that the desktop keeps for itself: a virtual key code and HotKeyModifiers.
struct SymbolicHotKey {
  bool isEnabled = false;
  qint64 keyCode = 0;
  qint64 modifiers = 0;
};

/// Reads them, anew at each call; none if they can't be read.
using SymbolicHotKeysReader = std::function<std::vector<SymbolicHotKey>()>;

/// What the environment's reader answers; none where it has no reader.
[[nodiscard]] std::vector<SymbolicHotKey> copySymbolicHotKeys();

}  // namespace platform
