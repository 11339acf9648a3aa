#include "platform/updater/UpdateSource.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace platform {
namespace {

constexpr qsizetype keySize = 32;
constexpr qint64 mostBytes = 1 << 16;

}  // namespace

Result<std::optional<UpdateSource>> UpdateSource::read(const QString& informationFile) {
  QFile file(informationFile);
  if (!file.open(QIODevice::ReadOnly))
    return Error{file.errorString()};
  const QJsonDocument document = QJsonDocument::fromJson(file.read(mostBytes));
  if (!document.isObject())
    return Error{QStringLiteral("no JSON object")};
  UpdateSource source{document[u"updateFeed"].toString(), document[u"updateKey"].toString()};
  if (source.feed.isEmpty() && source.key.isEmpty())
    return std::optional<UpdateSource>();
  if (source.feed.isEmpty())
    return Error{QStringLiteral("there is a key, but no address of a feed")};
  const auto key =
      QByteArray::fromBase64Encoding(source.key.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!key || (*key).size() != keySize)
    return Error{QStringLiteral("the key isn't an Ed25519 key in base64")};
  return std::optional(std::move(source));
}

}  // namespace platform
