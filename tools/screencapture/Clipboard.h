#pragma once

#include <cstdint>
#include <span>

namespace screencapture {

/// The clipboard's contents live in the program that offers them. So a small process of its own, a holder,
/// offers them until another program takes the clipboard, while the tool itself ends at once. Where the
/// desktop has a clipboard manager, the holder hands them to it and ends too.

/// The holder is this same program, started anew with this one argument, never typed by a user.
inline constexpr char holderArgument[] = "--hold-clipboard";
/// Another program that is about to end starts the tool with this one argument, and writes the forms of its
/// clipboard's contents (see ClipboardForms.h) to the tool's standard input.
inline constexpr char keepArgument[] = "--keep-clipboard";

/// Leaves a holder behind with this PNG file. True once it owns the clipboard.
[[nodiscard]] bool leaveOnClipboard(std::span<const std::uint8_t> png);
/// The same with the forms that come from standard input. False, and the clipboard as it was, where they
/// aren't complete.
[[nodiscard]] bool leaveInputOnClipboard();

/// The holder's whole run; returns its exit status. Wrong use unless one of the above started it.
[[nodiscard]] int runClipboardHolder();

}  // namespace screencapture
