#include "app/shell/CommandLine.h"

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

}  // namespace
