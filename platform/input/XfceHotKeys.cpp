#include "platform/input/XfceHotKeys.h"

#include <QMap>
#include <QXmlStreamReader>

namespace platform {
namespace {

/// What the window manager does by these keys it does only while it moves a window or switches between them.
bool isForTheMomentOnly(const QString& action) {
  static const QStringList actions{QStringLiteral("up_key"), QStringLiteral("down_key"),
                                   QStringLiteral("left_key"), QStringLiteral("right_key"),
                                   QStringLiteral("cancel_key")};
  return actions.contains(action);
}

/// A channel's values by their places: "/commands/custom/<Alt>F2".
using Channel = QMap<QString, QString>;

void readInto(Channel& channel, const QByteArray& text) {
  QXmlStreamReader reader(text);
  QStringList names;
  while (!reader.atEnd()) {
    const QXmlStreamReader::TokenType token = reader.readNext();
    if (reader.name() != u"property")
      continue;
    if (token == QXmlStreamReader::EndElement)
      names.removeLast();
    if (token != QXmlStreamReader::StartElement)
      continue;
    const QXmlStreamAttributes attributes = reader.attributes();
    names << attributes.value(QStringLiteral("name")).toString();
    // An empty property only holds others, or leaves its value to the system's file.
    if (attributes.value(QStringLiteral("type")) != u"empty")
      channel.insert(u'/' + names.join(u'/'), attributes.value(QStringLiteral("value")).toString());
  }
}

}  // namespace

QStringList xfceAccelerators(const QByteArray& systemText, const QByteArray& userText) {
  Channel channel;
  readInto(channel, systemText);
  readInto(channel, userText);
  QStringList accelerators;
  for (const QString& part : {QStringLiteral("/commands/"), QStringLiteral("/xfwm4/")}) {
    const bool hasOwn = channel.take(part + QStringLiteral("custom/override")) == u"true";
    const QString folder = part + (hasOwn ? QStringLiteral("custom/") : QStringLiteral("default/"));
    for (auto entry = channel.lowerBound(folder); entry != channel.end() && entry.key().startsWith(folder);
         ++entry) {
      const QString name = entry.key().sliced(folder.size());
      const bool isInUse = !entry.value().isEmpty() && !isForTheMomentOnly(entry.value());
      if (isInUse && !name.contains(u'/'))
        accelerators << name;
    }
  }
  return accelerators;
}

}  // namespace platform
