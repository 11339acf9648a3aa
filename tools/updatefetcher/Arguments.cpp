#include "tools/updatefetcher/Arguments.h"

#include "tools/updatefetcher/Address.h"

#include <charconv>
#include <string_view>

namespace updatefetcher {
namespace {

using namespace std::chrono_literals;

constexpr Limits limitsOfFeed{60s, 20s};
constexpr Limits limitsOfPackage{30min, 30s};
constexpr std::uint64_t greatestLimit = 1u << 30;

/// A whole number from 1 to `most`, in digits alone.
std::optional<std::uint64_t> number(std::string_view word, std::uint64_t most) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size() || value < 1 || value > most)
    return {};
  return value;
}

bool takePackage(std::span<const char* const> words, Arguments& arguments) {
  const auto signature = decodeSignature(words[3]);
  const auto size = number(words[4], largestPackage);
  arguments.path = words[5];
  if (!signature || !size || !arguments.path.starts_with('/') || arguments.path.ends_with('/'))
    return false;
  arguments.signature = *signature;
  arguments.size = *size;
  return true;
}

/// Takes the limits that the words begin with; false where they are wrong.
bool takeLimits(std::span<const char* const>& words, Limits& limits) {
  while (words.size() >= 2 && std::string_view(words[0]).starts_with("--")) {
    const std::string_view name = words[0];
    const auto value = number(words[1], greatestLimit);
    if (!value)
      return false;
    if (name == "--total")
      limits.total = std::chrono::milliseconds(*value);
    else if (name == "--stalled")
      limits.stalled = std::chrono::seconds(*value);
    else
      return false;
    words = words.subspan(2);
  }
  return true;
}

}  // namespace

std::optional<Arguments> parseArguments(std::span<const char* const> words) {
  constexpr Limits notGiven{};
  Limits given = notGiven;
  if (!takeLimits(words, given) || words.empty())
    return {};
  Arguments arguments;
  const std::string_view wish = words[0];
  arguments.wish = wish == "feed" ? Arguments::Wish::Feed : Arguments::Wish::Package;
  const bool isFeed = arguments.wish == Arguments::Wish::Feed;
  if ((!isFeed && wish != "package") || words.size() != (isFeed ? 3u : 6u))
    return {};
  arguments.limits = isFeed ? limitsOfFeed : limitsOfPackage;
  if (given.total != notGiven.total)
    arguments.limits.total = given.total;
  if (given.stalled != notGiven.stalled)
    arguments.limits.stalled = given.stalled;
  arguments.address = words[1];
  const auto key = decodeKey(words[2]);
  if (!key || !isTrustworthy(arguments.address) || (!isFeed && !takePackage(words, arguments)))
    return {};
  arguments.key = *key;
  return arguments;
}

}  // namespace updatefetcher
