#pragma once

#include "tools/updatefetcher/Signature.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace updatefetcher {

/// How long a download may take: in all, and without a byte.
struct Limits {
  std::chrono::milliseconds total;
  std::chrono::seconds stalled;
};

struct Arguments {
  enum class Wish { Feed, Package };

  Wish wish = Wish::Feed;
  std::string address;  // one that is trustworthy
  PublicKey key{};
  Limits limits{};

  // Of a package
  Signature signature{};
  std::uint64_t size = 0;  // bytes
  std::string path;        // of the file to be
};

inline constexpr std::uint64_t largestPackage = 256u << 20;
inline constexpr char usage[] =
    "usage: updatefetcher [LIMITS] feed ADDRESS KEY\n"
    "       updatefetcher [LIMITS] package ADDRESS KEY SIGNATURE SIZE FILE\n"
    "ADDRESS: by HTTPS, or of this machine; LIMITS: --total MILLISECONDS --stalled SECONDS";
inline constexpr int wrongUseStatus = 64;  // EX_USAGE of sysexits.h

/// `words` without the program's name; empty where they are wrong use.
[[nodiscard]] std::optional<Arguments> parseArguments(std::span<const char* const> words);

}  // namespace updatefetcher
