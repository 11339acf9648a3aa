#include "platform/updater/UpdateDecision.h"

#include <QByteArray>

#include <cstdint>

namespace {

using platform::Feed;
using platform::Version;

/// Whatever a feed holds is refused, or keeps to its bounds.
void read(const QByteArray& json) {
  const auto feed = platform::parseFeed(json);
  if (!feed)
    return;
  for (const Feed::Release& release : feed->releases) {
    bool isGood = release.page.scheme() == QStringLiteral("https") && !release.notesIn({}).isEmpty() &&
                  Version::parse(release.version.text()) == release.version;
    for (const Feed::Package& package : release.packages)
      isGood =
          isGood && package.size > 0 && package.size <= Feed::largestPackage && !package.address.isEmpty();
    if (!isGood)
      qFatal("a release that breaks the form");
  }
  const auto news = platform::newsIn(*feed, *Version::parse(QStringLiteral("1.9")));
  if (news && (news->version.isPreRelease() || news->version <= *Version::parse(QStringLiteral("1.9"))))
    qFatal("old news");
}

/// Two texts that are versions come in one order, whichever is first.
void compare(const QString& left, const QString& right) {
  const auto one = Version::parse(left), other = Version::parse(right);
  if (one && other && int(*one < *other) + int(*other < *one) + int(*one == *other) != 1)
    qFatal("no order");
}

}  // namespace

/// The JSON parser is the toolkit's and tells the fuzzer nothing, so the bytes are tried as each of the texts
/// of a release that is right otherwise, too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  read(bytes);
  const QByteArrayList parts = bytes.split('\0');
  const auto part = [&](qsizetype index, const char* usual) {
    return index < parts.size() && !parts[index].isEmpty() ? parts[index] : QByteArray(usual);
  };
  read(R"({"format":"sorrel-feed-1","serial":)" + part(0, "1") + R"(,"releases":[{"version":")" +
       part(1, "1.10") + R"(","page":")" + part(2, "https://example.org/") + R"(","notes":{"en":")" +
       part(3, "New.") + R"("},"packages":{"x":{"address":")" + part(4, "https://example.org/x") +
       R"(","size":)" + part(5, "1") + R"(,"signature":")" +
       part(6, QByteArray(64, 's').toBase64().constData()) + R"("}}}]})");
  compare(QString::fromUtf8(part(0, "1")), QString::fromUtf8(part(1, "1")));
  return 0;
}
