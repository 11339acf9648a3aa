#pragma once

#include "platform/system/ClipboardForms.h"

#include <chrono>

namespace platform {

/// Puts contents on the X clipboard for as long as nobody else copies, whatever becomes of this process:
/// starts `keeper`, the path of the program that owns them from then on, and waits until they can be pasted.
///
/// False where it can't be started, doesn't get the clipboard, or takes longer than `patience`; then the
/// clipboard is as it was.
[[nodiscard]] bool leaveOnClipboard(const std::string& keeper, std::span<const ClipboardForm> forms,
                                    std::chrono::milliseconds patience);

}  // namespace platform
