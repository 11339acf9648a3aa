#pragma once

#include <QVariant>

#include <functional>
#include <optional>

namespace platform {

/// Reads the hot keys that the desktop keeps for itself, anew at each call: a list of dictionaries with the
/// entries "kHISymbolicHotKeyEnabled" (boolean), "kHISymbolicHotKeyCode" (a virtual key code) and
/// "kHISymbolicHotKeyModifiers" (HotKeyModifiers). nullopt if they can't be read.
using SymbolicHotKeysReader = std::function<std::optional<QVariant>()>;

/// What the reader in use answers; an empty list until one is set.
[[nodiscard]] std::optional<QVariant> copySymbolicHotKeys();
/// An empty function takes the reader away.
void setSymbolicHotKeysReader(SymbolicHotKeysReader reader);

}  // namespace platform
