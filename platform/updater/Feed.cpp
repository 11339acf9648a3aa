#include "platform/updater/Feed.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace platform {
namespace {

constexpr qsizetype signatureSize = 64;
constexpr qint64 greatestSerial = qint64(1) << 53;  // of the whole numbers that JSON has room for
constexpr qsizetype longestAddress = 2000;
constexpr qsizetype mostKinds = 20;  // of languages, and of processors

std::optional<qint64> wholeNumber(const QJsonValue& value, qint64 least, qint64 most) {
  const double number = value.toDouble(-1);
  const bool isThere = number >= static_cast<double>(least) && number <= static_cast<double>(most);
  if (!isThere || static_cast<double>(static_cast<qint64>(number)) != number)
    return {};
  return static_cast<qint64>(number);
}

std::optional<QUrl> address(const QJsonValue& value) {
  const QString text = value.toString();
  const QUrl url(text, QUrl::StrictMode);
  if (text.size() > longestAddress || !url.isValid() || url.host().isEmpty())
    return {};
  return url;
}

Result<QMap<QString, QString>> notes(const QJsonObject& texts) {
  if (texts.isEmpty() || texts.size() > mostKinds)
    return Error{QStringLiteral("no notes, or too many")};
  QMap<QString, QString> all;
  for (auto text = texts.begin(); text != texts.end(); ++text) {
    const QString note = text->toString().trimmed();
    if (note.isEmpty() || note.size() > Feed::longestText)
      return Error{QStringLiteral("the notes are empty or too long")};
    all.insert(text.key(), note);
  }
  return all;
}

Result<QMap<QString, Feed::Package>> packages(const QJsonObject& entries) {
  if (entries.size() > mostKinds)
    return Error{QStringLiteral("too many packages")};
  QMap<QString, Feed::Package> all;
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    const QJsonObject object = entry->toObject();
    const auto url = address(object[u"address"]);
    const auto size = wholeNumber(object[u"size"], 1, Feed::largestPackage);
    const QByteArray signature = object[u"signature"].toString().toLatin1();
    const auto decoded = QByteArray::fromBase64Encoding(signature, QByteArray::AbortOnBase64DecodingErrors);
    if (!url || !size || !decoded || (*decoded).size() != signatureSize)
      return Error{QStringLiteral("a package without address, size or signature")};
    all.insert(entry.key(), {*url, *size, signature});
  }
  return all;
}

Result<Feed::Release> release(const QJsonObject& object) {
  const auto version = Version::parse(object[u"version"].toString());
  if (!version)
    return Error{QStringLiteral("no version")};
  const auto page = address(object[u"page"]);
  if (!page || page->scheme() != QStringLiteral("https"))
    return Error{QStringLiteral("no page")};
  auto texts = notes(object[u"notes"].toObject());
  if (!texts)
    return texts.error();
  auto files = packages(object[u"packages"].toObject());
  if (!files)
    return files.error();
  return Feed::Release{*version, *page, std::move(*texts), std::move(*files)};
}

}  // namespace

QString Feed::Release::notesIn(const QString& language) const {
  for (const QString& wanted : {language, QStringLiteral("en")})
    if (const auto found = notes.find(wanted); found != notes.end())
      return *found;
  return notes.empty() ? QString() : notes.first();
}

Result<Feed> parseFeed(const QByteArray& json) {
  if (json.size() > Feed::mostBytes)
    return Error{QStringLiteral("too large")};
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isObject())
    return Error{QStringLiteral("no JSON object")};
  const QJsonObject object = document.object();
  // So that nothing else that bears the same signature can be taken for a feed.
  if (object[u"format"] != QStringLiteral("sorrel-feed-1"))
    return Error{QStringLiteral("another format")};
  const auto serial = wholeNumber(object[u"serial"], 1, greatestSerial);
  if (!serial)
    return Error{QStringLiteral("no serial number")};
  const QJsonValue list = object[u"releases"];
  if (!list.isArray() || list.toArray().size() > Feed::mostReleases)
    return Error{QStringLiteral("no releases, or too many")};
  Feed feed;
  feed.serial = *serial;
  for (const QJsonValue entry : list.toArray()) {
    auto one = release(entry.toObject());
    if (!one)
      return Error{QStringLiteral("release %1: %2").arg(feed.releases.size() + 1).arg(one.error().reason)};
    feed.releases.push_back(std::move(*one));
  }
  return feed;
}

}  // namespace platform
