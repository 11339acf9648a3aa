#include "tools/updatefetcher/Signature.h"

#include <sodium.h>

namespace updatefetcher {
namespace {

template <std::size_t size>
std::optional<std::array<std::uint8_t, size>> decode(std::string_view base64) {
  std::array<std::uint8_t, size> bytes{};
  std::size_t length = 0;
  const char* end = nullptr;
  const int status = sodium_base642bin(bytes.data(), bytes.size(), base64.data(), base64.size(), nullptr,
                                       &length, &end, sodium_base64_VARIANT_ORIGINAL);
  if (status != 0 || length != size || end != base64.data() + base64.size())
    return {};
  return bytes;
}

}  // namespace

std::optional<PublicKey> decodeKey(std::string_view base64) {
  return decode<std::tuple_size_v<PublicKey>>(base64);
}

std::optional<Signature> decodeSignature(std::string_view base64) {
  return decode<std::tuple_size_v<Signature>>(base64);
}

bool verifies(std::span<const std::uint8_t> message, const Signature& signature, const PublicKey& key) {
  return sodium_init() >= 0 &&
         crypto_sign_verify_detached(signature.data(), message.data(), message.size(), key.data()) == 0;
}

}  // namespace updatefetcher
