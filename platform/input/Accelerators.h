#pragma once

#include "platform/input/KeySymbols.h"
#include "platform/input/SymbolicHotKeys.h"

#include <QStringView>

#include <optional>

namespace platform {

/// The hot key that a desktop's settings write as text: "<Control><Alt>t", "Ctrl+Alt+T", "Meta+Print",
/// "XF86AudioMute", "<Alt>Above_Tab" for the key above Tab, "<Super>0x31" for an X keycode. "Meta+" is the
/// key that "<Super>" names. A symbol that needs Shift brings it along: "<Super>exclam".
///
/// nullopt for what is no key, such as "disabled" and "none", for names that nobody knows, and for a symbol
/// that this keyboard doesn't print.
[[nodiscard]] std::optional<SymbolicHotKey> parseAccelerator(QStringView text, const KeySymbols& keyboard);

}  // namespace platform
