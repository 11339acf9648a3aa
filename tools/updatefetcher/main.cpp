// Fetches what tells of the program's new versions, and their packages, and verifies both. A program of its
// own, so that no network and no cryptography is loaded in the one that is always there.

#include "platform/system/Descriptor.h"
#include "tools/updatefetcher/Arguments.h"
#include "tools/updatefetcher/Download.h"
#include "tools/updatefetcher/PackageFile.h"

#include <algorithm>
#include <cstdio>
#include <curl/curl.h>
#include <unistd.h>
#include <vector>

using namespace updatefetcher;
using platform::UpdateProblem;

namespace {

constexpr std::uint64_t largestFeed = 1u << 20;

/// Prints what is signed: all that follows the first line, which is the signature.
std::optional<UpdateProblem> printFeed(const Arguments& arguments) {
  std::vector<std::uint8_t> bytes;
  Download download{arguments.address, arguments.limits, 0, largestFeed, {}};
  download.take = [&](std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return true;
  };
  if (const auto problem = fetch(download))
    return problem;
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const auto signature = decodeSignature(text.substr(0, encodedSignatureSize));
  if (!signature || text.size() <= encodedSignatureSize || text[encodedSignatureSize] != '\n') {
    std::fputs("updatefetcher: what came is no feed\n", stderr);
    return UpdateProblem::Malformed;
  }
  const auto body = platform::bytesOf(text.substr(encodedSignatureSize + 1));
  if (!verifies(body, *signature, arguments.key)) {
    std::fputs("updatefetcher: the feed's signature is wrong\n", stderr);
    return UpdateProblem::Forged;
  }
  if (platform::writeAll(STDOUT_FILENO, body) != 0)
    return UpdateProblem::Unwritable;
  return {};
}

}  // namespace

int main(int count, char** words) {
  const std::span<const char* const> given(words + (count > 0),
                                           static_cast<std::size_t>(count > 0 ? count - 1 : 0));
  const auto arguments = parseArguments(given);
  if (!arguments) {
    std::fprintf(stderr, "%s\n", usage);
    return wrongUseStatus;
  }
  if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK)
    return 1;
  const auto problem =
      arguments->wish == Arguments::Wish::Feed ? printFeed(*arguments) : fetchPackage(*arguments);
  return problem ? static_cast<int>(*problem) : 0;
}
