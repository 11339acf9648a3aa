#include "platform/base/Bundle.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using platform::Bundle;

namespace {

using Table = QMap<QString, QString>;

/// The texts of a table's source by key. Complains of a key that stands there twice.
Table readTable(const QString& name) {
  QFile file(QStringLiteral(SORREL_STRINGS_DIR "/") + name + QStringLiteral(".ts"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  Table texts;
  QString key;
  QXmlStreamReader xml(&file);
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement)
      continue;
    if (xml.name() == QStringLiteral("message")) {
      key = xml.attributes().value(QStringLiteral("id")).toString();
      EXPECT_FALSE(texts.contains(key)) << qPrintable(key);
    } else if (xml.name() == QStringLiteral("translation")) {
      texts.insert(key, xml.readElementText());
    }
  }
  EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
  return texts;
}

QStringList placeholders(const QString& text) {
  static const QRegularExpression pattern(QStringLiteral("%L?\\d+"));
  QStringList found;
  for (const auto& match : pattern.globalMatch(text))
    found << match.captured();
  found.sort();
  return found;
}

struct Tables {
  const char* name;
  const char* folder;
};

class StringTablesTest : public testing::TestWithParam<Tables> {};

TEST_P(StringTablesTest, koreanAndEnglishSayTheSameThings) {
  const QString name = QString::fromLatin1(GetParam().name);
  const Table english = readTable(name + QStringLiteral("_en"));
  const Table korean = readTable(name + QStringLiteral("_ko"));
  EXPECT_FALSE(english.isEmpty());
  EXPECT_EQ(english.keys().join(u'\n'), korean.keys().join(u'\n'));
  for (const auto& [key, text] : english.asKeyValueRange()) {
    EXPECT_EQ(text.trimmed(), text) << qPrintable(key);
    EXPECT_FALSE(text.isEmpty() || korean.value(key).trimmed().isEmpty()) << qPrintable(key);
    EXPECT_EQ(placeholders(text), placeholders(korean.value(key))) << qPrintable(key);
  }
}

TEST_P(StringTablesTest, everyTextReachesTheProgram) {
  for (const QString& language : {QStringLiteral("en"), QStringLiteral("ko")}) {
    const auto bundle =
        Bundle::withPath(QString::fromLatin1(GetParam().folder) + u'/' + language + QStringLiteral(".lproj"));
    ASSERT_NE(bundle, nullptr);
    const Table texts = readTable(QString::fromLatin1(GetParam().name) + u'_' + language);
    for (const auto& [key, text] : texts.asKeyValueRange())
      EXPECT_EQ(bundle->localizedString(key, QString()), text) << qPrintable(key);
  }
}

INSTANTIATE_TEST_SUITE_P(Resources, StringTablesTest,
                         testing::Values(Tables{"sorrel", ":/sorrel"},
                                         Tables{"KeyboardShortcuts",
                                                ":/sorrel/KeyboardShortcuts_KeyboardShortcuts.bundle"}),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

}  // namespace
