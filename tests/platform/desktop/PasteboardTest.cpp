// A program that copies and then ends, on an X server of its own, and others that paste.

#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"
#include "tests/support/XvfbServer.h"

#include <QFile>
#include <QUrl>

#include <gtest/gtest.h>
#include <signal.h>

using namespace Qt::StringLiterals;
using namespace testing_support;

namespace {

class PasteboardTest : public testing::Test {
 protected:
  PasteboardTest() {
    environment.insert(u"DISPLAY"_s, QString::fromStdString(server.display()));
    environment.remove(u"QT_QPA_PLATFORM"_s);
  }

  [[nodiscard]] std::unique_ptr<Program> start(const QStringList& command) const {
    return std::make_unique<Program>(command, environment);
  }
  [[nodiscard]] QByteArray paste(const QString& target) const {
    const auto program = start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, target});
    EXPECT_EQ(program->waitForEnd(), 0) << qPrintable(target) << program->errors().constData();
    return program->output();
  }

  const ScratchHome home;
  const QByteArray png = QByteArray(300'000, 'p');  // nobody here looks into it
  const QString file = home.write(u"한 장.png"_s, png);
  const QString giverPath = QStringLiteral(SORREL_TESTS_DIR "/pasteboard_giver");
  XvfbServer server{200, 200};
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(PasteboardTest, WhatWasCopiedOutlivesItsProgramHoweverThatEnds) {
  const auto giver = start({giverPath, file});
  until("the giver has copied", [&] { return giver->output() == "given\n"; });
  giver->send(SIGKILL);
  EXPECT_EQ(giver->waitForEnd(), -SIGKILL);
  const QByteArray address = QUrl::fromLocalFile(file).toEncoded();
  EXPECT_EQ(paste(u"TARGETS"_s),
            "TARGETS\nTIMESTAMP\nMULTIPLE\nSAVE_TARGETS\nimage/png\ntext/uri-list\n"
            "x-special/gnome-copied-files\n");
  EXPECT_EQ(paste(u"image/png"_s), png);
  EXPECT_EQ(paste(u"text/uri-list"_s), address + "\r\n");
  EXPECT_EQ(paste(u"x-special/gnome-copied-files"_s), "copy\n" + address);
}

TEST_F(PasteboardTest, ATextCanBePastedByProgramsOfEveryAge) {
  const auto copy = [&](const QString& text) {
    const auto giver = start({giverPath, u"--text"_s, text});
    until("the giver has copied", [&] { return giver->output() == "given\n"; });
  };
  copy(u"#2D7FF9"_s);
  EXPECT_EQ(paste(u"STRING"_s), "#2D7FF9");
  EXPECT_EQ(paste(u"UTF8_STRING"_s), "#2D7FF9");
  copy(u"한글"_s);
  EXPECT_EQ(paste(u"text/plain;charset=utf-8"_s), u"한글"_s.toUtf8());
  EXPECT_FALSE(paste(u"TARGETS"_s).contains("\nSTRING\n")) << "it has no such letters";
}

TEST_F(PasteboardTest, WithoutAKeeperTheOldContentsStayAndTheCopyIsKnownToHaveFailed) {
  const QString other = home.write(u"other.txt"_s, "another's");
  EXPECT_EQ(start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-i"_s, other})->waitForEnd(), 0);
  const QString lonely = home.path(u"giver"_s);  // with nothing around it
  ASSERT_TRUE(QFile::copy(giverPath, lonely));
  const auto giver = start({lonely, file});
  until("the giver has tried", [&] { return giver->output() == "not given\n"; });
  EXPECT_EQ(paste(u"STRING"_s), "another's");
}

}  // namespace
