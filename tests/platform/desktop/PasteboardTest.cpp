// A program that copies and then ends, on an X server of its own, and others that paste.

#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XvfbServer.h"

#include <QBuffer>
#include <QElapsedTimer>
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
    QBuffer buffer(&png);
    randomPicture({400, 300}, 1).save(&buffer, "PNG");
    file = home.write(u"한 장.png"_s, png);
    environment.insert(u"DISPLAY"_s, QString::fromStdString(server.display()));
    environment.remove(u"QT_QPA_PLATFORM"_s);
    giver = start({QStringLiteral(SORREL_TESTS_DIR "/pasteboard_giver"), file});
    until("the giver has copied", [&] { return giver->output().contains("given"); });
  }

  [[nodiscard]] std::unique_ptr<Program> start(const QStringList& command) const {
    return std::make_unique<Program>(command, environment);
  }
  [[nodiscard]] QByteArray paste(const QString& target) const {
    const auto program = start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, target});
    EXPECT_EQ(program->waitForEnd(), 0) << qPrintable(target) << program->errors().constData();
    return program->output();
  }
  void expectContents() const {
    const QByteArray address = QUrl::fromLocalFile(file).toEncoded();
    EXPECT_GT(png.size(), 256 * 1024) << "not too much for one request";
    EXPECT_EQ(paste(u"image/png"_s), png);
    EXPECT_EQ(paste(u"text/uri-list"_s), address + "\r\n");
    EXPECT_EQ(paste(u"x-special/gnome-copied-files"_s), "copy\n" + address);
  }
  void endGiver() const {
    giver->send(SIGTERM);
    EXPECT_EQ(giver->waitForEnd(), 0) << giver->errors().constData();
  }

  const ScratchHome home;
  XvfbServer server{200, 200};
  Screen screen{server.display()};
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  QByteArray png;
  QString file;
  std::unique_ptr<Program> giver;
};

TEST_F(PasteboardTest, WhatWasCopiedOutlivesItsProgram) {
  expectContents();
  const QImage picture = QImage::fromData(png);
  EXPECT_EQ(QImage::fromData(paste(u"image/bmp"_s)).convertToFormat(picture.format()), picture);
  endGiver();
  expectContents();
}

TEST_F(PasteboardTest, AClipboardManagerThatHangsHoldsNothingUp) {
  screen.takeSelection("CLIPBOARD_MANAGER");
  QElapsedTimer timer;
  timer.start();
  endGiver();
  EXPECT_LT(timer.elapsed(), 4500) << "the toolkit alone would wait for five seconds";
  expectContents();
}

TEST_F(PasteboardTest, WhatAnotherProgramHasCopiedSinceStays) {
  const QString other = home.write(u"other.txt"_s, "another's");
  EXPECT_EQ(start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-i"_s, other})->waitForEnd(), 0);
  endGiver();
  EXPECT_EQ(paste(u"STRING"_s), "another's");
}

}  // namespace
