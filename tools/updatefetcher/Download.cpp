#include "tools/updatefetcher/Download.h"

#include "tools/updatefetcher/Address.h"

#include <algorithm>
#include <cstdio>
#include <curl/curl.h>
#include <memory>

namespace updatefetcher {
namespace {

using platform::UpdateProblem;
using namespace std::chrono_literals;

constexpr int mostHops = 5;
constexpr auto connectingLimit = 20s;

using Handle = std::unique_ptr<CURL, void (*)(CURL*)>;

/// One request to one server, without what follows from its answer.
class Request {
 public:
  Request(const Download& download, const std::string& address, std::chrono::milliseconds patience);

  [[nodiscard]] std::optional<UpdateProblem> run();
  /// Where the server sends on to; empty where it doesn't.
  [[nodiscard]] std::string next() const;

 private:
  enum Status : long { Good = 200, Rest = 206, FirstRedirection = 300, LastRedirection = 399 };

  static std::size_t receive(const char* data, std::size_t, std::size_t count, void* self);
  std::size_t take(std::span<const std::uint8_t> bytes);
  [[nodiscard]] std::optional<UpdateProblem> problemOf(CURLcode code) const;
  [[nodiscard]] long status() const;
  /// Whether what comes is what was asked for.
  [[nodiscard]] bool isAnswer() const { return status() == (download.from > 0 ? Rest : Good); }

  const Download& download;
  const Handle handle{curl_easy_init(), curl_easy_cleanup};
  std::uint64_t received = 0;
  std::optional<UpdateProblem> refusal;  // of what was received
};

Request::Request(const Download& wanted, const std::string& address, std::chrono::milliseconds patience)
    : download(wanted) {
  const auto set = [this](CURLoption option, auto value) {
    (void)curl_easy_setopt(handle.get(), option, value);  // fails for lack of memory alone
  };
  set(CURLOPT_URL, address.c_str());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_NOPROXY, "127.0.0.1,::1,localhost");
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_FAILONERROR, 1L);
  set(CURLOPT_CONNECTTIMEOUT_MS,
      static_cast<long>(std::min<std::chrono::milliseconds>(connectingLimit, patience).count()));
  set(CURLOPT_TIMEOUT_MS, static_cast<long>(patience.count()));
  set(CURLOPT_LOW_SPEED_LIMIT, 1L);
  set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(download.limits.stalled.count()));
  set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(download.most));
  set(CURLOPT_WRITEFUNCTION, &Request::receive);
  set(CURLOPT_WRITEDATA, this);
  if (download.from > 0)
    set(CURLOPT_RANGE, (std::to_string(download.from) + '-').c_str());  // it is copied
}

std::optional<UpdateProblem> Request::run() {
  const CURLcode code = curl_easy_perform(handle.get());
  auto problem = refusal ? refusal : problemOf(code);
  if (!problem && !isAnswer() && next().empty())
    problem = UpdateProblem::Refused;
  if (problem)
    std::fprintf(stderr, "updatefetcher: status %ld, %s\n", status(), curl_easy_strerror(code));
  return problem;
}

std::string Request::next() const {
  char* address = nullptr;
  (void)curl_easy_getinfo(handle.get(), CURLINFO_REDIRECT_URL, &address);
  return address ? address : "";
}

long Request::status() const {
  long number = 0;
  (void)curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &number);
  return number;
}

std::size_t Request::receive(const char* data, std::size_t, std::size_t count, void* self) {
  return static_cast<Request*>(self)->take({reinterpret_cast<const std::uint8_t*>(data), count});
}

/// Anything but the number of the bytes ends the request.
std::size_t Request::take(std::span<const std::uint8_t> bytes) {
  received += bytes.size();
  if (received > download.most) {
    refusal = UpdateProblem::TooLarge;
    return bytes.size() + 1;
  }
  if (status() >= FirstRedirection && status() <= LastRedirection)
    return bytes.size();  // the page that comes with it
  if (!isAnswer()) {
    refusal = UpdateProblem::Refused;
    return bytes.size() + 1;
  }
  if (download.take(bytes))
    return bytes.size();
  refusal = UpdateProblem::Unwritable;
  return bytes.size() + 1;
}

std::optional<UpdateProblem> Request::problemOf(CURLcode code) const {
  switch (code) {
    case CURLE_OK:
      return {};
    case CURLE_OPERATION_TIMEDOUT: {
      curl_off_t connected = 0;  // after so many microseconds, if at all
      (void)curl_easy_getinfo(handle.get(), CURLINFO_CONNECT_TIME_T, &connected);
      return connected > 0 ? UpdateProblem::TooSlow : UpdateProblem::Unreachable;
    }
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
      return UpdateProblem::Insecure;
    case CURLE_HTTP_RETURNED_ERROR:
      return UpdateProblem::Refused;
    case CURLE_FILESIZE_EXCEEDED:
      return UpdateProblem::TooLarge;
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_HTTP2_STREAM:
      return UpdateProblem::CutOff;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_BAD_CONTENT_ENCODING:
      return UpdateProblem::Malformed;
    default:
      return UpdateProblem::Unreachable;
  }
}

}  // namespace

std::optional<UpdateProblem> fetch(const Download& download) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + download.limits.total;
  std::string address = download.address;
  for (int hop = 0; hop < mostHops; ++hop) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    if (left <= 0ms)
      return UpdateProblem::TooSlow;
    Request request(download, address, left);
    if (const auto problem = request.run())
      return problem;
    const std::string next = request.next();
    if (next.empty())
      return {};
    if (!mayLeadTo(address, next)) {
      std::fprintf(stderr, "updatefetcher: redirected to %s\n", next.c_str());
      return UpdateProblem::Redirected;
    }
    address = next;
  }
  std::fputs("updatefetcher: redirected too often\n", stderr);
  return UpdateProblem::Redirected;
}

}  // namespace updatefetcher
