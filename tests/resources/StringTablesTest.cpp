#include "platform/base/Bundle.h"

#include <QDir>
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

/// The keys that `one` has and `other` hasn't.
std::string keysMissing(const Table& one, const Table& other) {
  QStringList keys = one.keys();
  keys.removeIf([&](const QString& key) { return other.contains(key); });
  return keys.join(u' ').toStdString();
}

TEST(StringTables, everyLanguageSaysTheSameThings) {
  for (const auto& [name, folder] :
       {std::pair(u"sorrel"_s, u":/sorrel"_s),
        std::pair(u"KeyboardShortcuts"_s, u":/sorrel/KeyboardShortcuts_KeyboardShortcuts.bundle"_s)}) {
    const Table english = readTable(name, u"en"_s, folder);
    EXPECT_FALSE(english.isEmpty());
    QStringList languages = QDir(folder).entryList({u"*.lproj"_s});
    languages.replaceInStrings(u".lproj"_s, QString());
    EXPECT_TRUE(languages.contains(u"ko"_s));
    for (const QString& language : languages) {
      SCOPED_TRACE(qPrintable(language));
      const Table table = readTable(name, language, folder);
      EXPECT_EQ(keysMissing(english, table), "");
      EXPECT_EQ(keysMissing(table, english), "") << "not in English";
      for (const auto& [key, text] : table.asKeyValueRange()) {
        const bool isPartOfText = key.startsWith(u"settings.storage.warning"_s);
        EXPECT_TRUE(isPartOfText || text.trimmed() == text) << qPrintable(key);
        EXPECT_FALSE(text.trimmed().isEmpty()) << qPrintable(key);
        EXPECT_TRUE(placeholders(text) == placeholders(english.value(key))) << qPrintable(key);
      }
    }
  }
}

}  // namespace
