// Starting and ending.

#include "tests/e2e/Sorrel.h"
#include "tests/support/Files.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <random>
#include <signal.h>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

TEST(Lifecycle, ASecondStartEndsWellAndTheFirstGoesOn) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  desktop.run({Sorrel::built()});
  EXPECT_TRUE(sorrel.program().isRunning());
  sorrel.capture(QRect(100, 100, 50, 50));
}

TEST(Lifecycle, WithoutADisplayItSaysSoInOneLine) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.remove(u"WAYLAND_DISPLAY"_s);
  for (const auto& [platform, display] : {std::pair(u"xcb"_s, QString()), std::pair(QString(), u":987"_s),
                                          std::pair(u"wayland"_s, QString())}) {
    environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    environment.insert(u"DISPLAY"_s, display);
    Program program({Sorrel::built()}, environment);
    EXPECT_EQ(program.waitForEnd(), 1);
    const QByteArray said = program.errors();
    EXPECT_TRUE(said.startsWith("Sorrel can't be shown on a display: ") && said.count('\n') == 1)
        << said.toStdString();
  }
}

TEST(Lifecycle, TerminationSignalsEndItCleanly) {
  Desktop desktop;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    Sorrel sorrel(desktop);
    sorrel.program().send(signal);
    EXPECT_EQ(sorrel.program().waitForEnd(), 0) << strsignal(signal);
    EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_S, XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT));
  }
}

TEST(Lifecycle, AKillWhileSettingsAreWrittenLosesNothing) {
  const unsigned seed = std::random_device()();
  std::printf("seed %u\n", seed);
  std::mt19937 random(seed);
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"defaults.json"_s);
  const QString writer = QStringLiteral(E2E_BUILD_DIR "/tests/settings_writer");

  qint64 written = 0;
  for (int round = 0; round < 200; ++round) {
    Program program({writer, path}, QProcessEnvironment::systemEnvironment());
    const auto turns = 1 + random() % 5;
    until("it has written", [&] { return program.output().count('\n') >= static_cast<qsizetype>(turns); });
    QThread::usleep(random() % 3000);  // anywhere within the writes that follow
    program.send(SIGKILL);
    ASSERT_EQ(program.waitForEnd(), -SIGKILL);

    const QJsonObject store = QJsonDocument::fromJson(testing_support::contentsOf(path)).object();
    const qint64 last = program.output().trimmed().split('\n').last().toLongLong();
    ASSERT_GT(last, written);
    // What it has said it had written is there, or the one value after that.
    ASSERT_GE(store.value(u"turn"_s).toInteger(), last);
    ASSERT_LE(store.value(u"turn"_s).toInteger(), last + 1);
    ASSERT_TRUE(store.value(u"text"_s).toString().endsWith(u"end"));
    written = last;
  }
}

}  // namespace
}  // namespace e2e
