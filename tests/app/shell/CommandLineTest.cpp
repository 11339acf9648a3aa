#include "app/shell/CommandLine.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using Kind = CommandLine::Kind;

namespace {

TEST(CommandLineTest, EachLineHasItsMeaning) {
  const struct {
    QString line;
    Kind kind;
    std::optional<Action> action = {};
    QString named = {};  // by the complaint
  } rows[] = {
      {u""_s, Kind::Start},
      {u"--capture"_s, Kind::Act, Action::Capture},
      {u"--capture-and-edit"_s, Kind::Act, Action::CaptureAndEdit},
      {u"--capture-to-clipboard"_s, Kind::Act, Action::CaptureToClipboard},
      {u"--history"_s, Kind::Act, Action::History},
      {u"--settings"_s, Kind::Act, Action::Settings},
      {u"--quit"_s, Kind::Act, Action::Quit},
      {u"--version"_s, Kind::Version},
      {u"--help"_s, Kind::Help},
      {u"-session 10fe-1"_s, Kind::Start},
      {u"--history -session 10fe-1"_s, Kind::Act, Action::History},
      {u"-session"_s, Kind::Wrong, {}, u"-session"_s},
      {u"--captured"_s, Kind::Wrong, {}, u"--captured"_s},
      {u"-capture"_s, Kind::Wrong, {}, u"-capture"_s},
      {u"capture"_s, Kind::Wrong, {}, u"capture"_s},
      {u"--capture --quit"_s, Kind::Wrong, {}, u"--quit"_s},
      {u"--quit --quit"_s, Kind::Wrong, {}, u"--quit"_s},
      {u"--help --what"_s, Kind::Wrong, {}, u"--what"_s},
  };
  for (const auto& row : rows) {
    const CommandLine parsed = parseCommandLine(row.line.split(u' ', Qt::SkipEmptyParts));
    EXPECT_EQ(parsed.kind, row.kind) << row.line.toStdString();
    EXPECT_EQ(parsed.action, row.action) << row.line.toStdString();
    EXPECT_TRUE(parsed.fault.contains(row.named) && parsed.fault.isEmpty() == row.named.isEmpty())
        << row.line.toStdString();
  }
  EXPECT_EQ(parseCommandLine({QString()}).kind, Kind::Wrong) << "an empty argument is an argument";
}

TEST(CommandLineTest, WhatTheProgramsIconOffersIsUnderstood) {
  QFile file(QStringLiteral(SORREL_DESKTOP_ENTRY));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QString listed, offered;
  for (QString line : QString::fromUtf8(file.readAll()).split(u'\n')) {
    if (line.startsWith(u"Actions="_s))
      listed = line.sliced(8);
    if (line.startsWith(u"[Desktop Action "_s))
      offered += line.sliced(16).replace(u']', u';');
    if (!line.startsWith(u"Exec=sorrel "_s))
      continue;
    const CommandLine parsed = parseCommandLine(line.sliced(12).split(u' '));
    ASSERT_TRUE(parsed.action) << line.toStdString();
    EXPECT_TRUE(offered.endsWith(QString::fromLatin1(nameOf(*parsed.action)) + u';')) << line.toStdString();
  }
  EXPECT_EQ(offered, listed);
  EXPECT_EQ(listed.count(u';'), 5);
}

}  // namespace
