#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace updatefetcher {

// Ed25519, RFC 8032.
using PublicKey = std::array<std::uint8_t, 32>;
using Signature = std::array<std::uint8_t, 64>;

/// Of base64 with its padding and nothing else.
[[nodiscard]] std::optional<PublicKey> decodeKey(std::string_view base64);
[[nodiscard]] std::optional<Signature> decodeSignature(std::string_view base64);
inline constexpr std::size_t encodedSignatureSize = 88;

[[nodiscard]] bool verifies(std::span<const std::uint8_t> message, const Signature& signature,
                            const PublicKey& key);

}  // namespace updatefetcher
