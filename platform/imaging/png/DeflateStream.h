#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// How many bytes must lie writable and readable after a stream that `letOthersFollow` is given.
inline constexpr std::size_t roomAfterStream = 8;

/// libdeflate makes whole streams only, so that what several cores make of a picture's parts ends after the
/// first. This takes the mark of the end from such a stream's last block, and adds an empty block that fills
/// up to a whole byte: another stream may then be put behind it to make one of the two. Nothing is decoded;
/// the codes are just stepped over, with no more than their lengths looked up. Returns the new size, or 0 if
/// the bytes are no deflate stream (RFC 1951).
[[nodiscard]] std::size_t letOthersFollow(std::uint8_t* stream, std::size_t size);

}  // namespace platform
