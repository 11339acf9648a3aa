#pragma once

#include <cstdint>
#include <span>

namespace screencapture {

/// The clipboard's contents live in the program that offers them. So a small process of its own, a holder,
/// offers the picture until another program takes the clipboard, while the tool itself ends at once.

/// The holder is this same program, started anew with this one argument, never typed by a user.
inline constexpr char holderArgument[] = "--hold-clipboard";

/// Leaves a holder behind with this PNG file. True once it owns the clipboard.
[[nodiscard]] bool leaveOnClipboard(std::span<const std::uint8_t> png);

/// The holder's whole run; returns its exit status. Wrong use unless leaveOnClipboard() started it.
[[nodiscard]] int runClipboardHolder();

}  // namespace screencapture
