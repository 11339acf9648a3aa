#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One of the forms in which the clipboard's contents are offered: the X target that other programs ask for
/// it by, and its bytes, which somebody else owns.
struct ClipboardForm {
  std::string_view target;
  std::span<const std::uint8_t> bytes;
};

/// Forms go from one program to another as one run of bytes: for each its target, a blank, the number of its
/// bytes in decimal and a newline, then these bytes.
[[nodiscard]] std::string headerOf(const ClipboardForm& form);

/// The forms, in the order in which they stand there, and pointing into `bytes`. Empty where the bytes are
/// anything else or end too early, and where they hold no form at all.
[[nodiscard]] std::optional<std::vector<ClipboardForm>> parseForms(std::span<const std::uint8_t> bytes);

}  // namespace platform
