#include "tools/updatefetcher/Address.h"

#include <curl/curl.h>
#include <memory>

namespace updatefetcher {
namespace {

class ParsedAddress {
 public:
  explicit ParsedAddress(const std::string& address) {
    isWhole = curl_url_set(handle.get(), CURLUPART_URL, address.c_str(), 0) == CURLUE_OK;
  }

  /// Empty where it isn't there.
  [[nodiscard]] std::string part(CURLUPart which) const {
    char* text = nullptr;
    if (!isWhole || curl_url_get(handle.get(), which, &text, 0) != CURLUE_OK)
      return {};
    const std::unique_ptr<char, void (*)(void*)> owned(text, curl_free);
    return text;
  }

 private:
  const std::unique_ptr<CURLU, void (*)(CURLU*)> handle{curl_url(), curl_url_cleanup};
  bool isWhole = false;
};

}  // namespace

bool isTrustworthy(const std::string& address) {
  const ParsedAddress parsed(address);
  if (!parsed.part(CURLUPART_USER).empty() || !parsed.part(CURLUPART_PASSWORD).empty())
    return false;
  const std::string scheme = parsed.part(CURLUPART_SCHEME), host = parsed.part(CURLUPART_HOST);
  const bool isThisMachine = host == "127.0.0.1" || host == "[::1]" || host == "localhost";
  return !host.empty() && (scheme == "https" || (scheme == "http" && isThisMachine));
}

bool mayLeadTo(const std::string& from, const std::string& to) {
  const auto scheme = [](const std::string& address) {
    return ParsedAddress(address).part(CURLUPART_SCHEME);
  };
  return isTrustworthy(to) && (scheme(to) == "https" || scheme(from) == scheme(to));
}

}  // namespace updatefetcher
