#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

inline constexpr std::size_t chunkFrame = 12;  // length, type and checksum around a chunk's data

/// As PNG has numbers: four bytes, the greatest first.
void putNumber(std::uint8_t* to, std::size_t number);

/// Completes a chunk whose `size` bytes of data already lie 8 bytes after `chunk`; returns its end.
std::uint8_t* closeChunk(std::uint8_t* chunk, std::string_view type, std::size_t size);

}  // namespace platform
