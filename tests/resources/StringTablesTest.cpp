#include "platform/base/Bundle.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Bundle;

namespace {

using Table = QMap<QString, QString>;

/// The texts of a table's source by key. Complains of a key that stands there twice, and of a text that
/// doesn't reach the program.
Table readTable(const QString& name, const QString& language, const QString& folder) {
  const auto bundle = Bundle::withPath(folder + u'/' + language + u".lproj"_s);
  QFile file(QStringLiteral(SORREL_STRINGS_DIR "/%1_%2.ts").arg(name, language));
  EXPECT_TRUE(bundle && file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  Table texts;
  QString key;
  QXmlStreamReader xml(&file);
  while (bundle && !xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement)
      continue;
    if (xml.name() == u"message"_s) {
      key = xml.attributes().value(u"id"_s).toString();
      EXPECT_FALSE(texts.contains(key)) << qPrintable(key);
    } else if (xml.name() == u"translation"_s) {
      texts.insert(key, xml.readElementText());
      EXPECT_EQ(bundle->localizedString(key, QString()), texts.value(key)) << qPrintable(key);
    }
  }
  EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
  return texts;
}

QStringList placeholders(const QString& text) {
  static const QRegularExpression pattern(u"%L?\\d+"_s);
  QStringList found;
  for (const auto& match : pattern.globalMatch(text))
    found << match.captured();
  found.sort();
  return found;
}

TEST(StringTables, koreanAndEnglishSayTheSameThings) {
  for (const auto& [name, folder] :
       {std::pair(u"sorrel"_s, u":/sorrel"_s),
        std::pair(u"KeyboardShortcuts"_s, u":/sorrel/KeyboardShortcuts_KeyboardShortcuts.bundle"_s)}) {
    const Table english = readTable(name, u"en"_s, folder), korean = readTable(name, u"ko"_s, folder);
    EXPECT_FALSE(english.isEmpty());
    EXPECT_EQ(english.keys(), korean.keys());
    for (const auto& [key, text] : english.asKeyValueRange()) {
      const bool isPartOfText = key.startsWith(u"settings.storage.warning"_s);
      EXPECT_TRUE(isPartOfText || text.trimmed() == text) << qPrintable(key);
      EXPECT_FALSE(text.isEmpty() || korean.value(key).trimmed().isEmpty()) << qPrintable(key);
      EXPECT_EQ(placeholders(text), placeholders(korean.value(key))) << qPrintable(key);
    }
  }
}

}  // namespace
