// The program that asks the desktop's services, with the real front end of the desktop's portal and a back
// end of our own. Skipped where that front end isn't installed.

#include "tests/support/Files.h"
#include "tests/support/PrivateSession.h"
#include "tests/support/Waiting.h"
#include "tests/tools/screencapture/ScreenshotBackend.h"
#include "tools/screencapture/services/Answer.h"

#include <QColor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QUrl>

#include <fcntl.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace screencapture;
using namespace testing_support;

namespace {

using Leave = ScreenshotBackend::Leave;

constexpr char frontEnd[] = "/usr/libexec/xdg-desktop-portal";
constexpr char permissionStore[] = "/usr/libexec/xdg-permission-store";

struct Session : PrivateSession {
  Session() {
    write(
        u"portals/test.portal"_s,
        "[portal]\nDBusName=org.freedesktop.impl.portal.desktop.test\n"
        "Interfaces=org.freedesktop.impl.portal.Screenshot;org.freedesktop.impl.portal.Access\nUseIn=test\n");
    setVariable("XDG_DESKTOP_PORTAL_DIR", home(u"portals"_s));
    setVariable("XDG_CURRENT_DESKTOP", u"test"_s);
  }
};

/// The desktop's service that shows notes to the user.
class Notifications : public QDBusVirtualObject {
 public:
  explicit Notifications(const QString& address) : bus(QDBusConnection::connectToBus(address, u"notes"_s)) {
    bus.registerVirtualObject(u"/org/freedesktop/Notifications"_s, this, QDBusConnection::SingleNode);
    bus.registerService(u"org.freedesktop.Notifications"_s);
  }
  ~Notifications() override { QDBusConnection::disconnectFromBus(bus.name()); }

  QList<QVariantList> shown;

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != u"Notify"_s || message.signature() != u"susssasa{sv}i"_s)
      return false;
    shown << message.arguments();
    connection.send(message.createReply(1U));
    return true;
  }

  QDBusConnection bus;
};

/// What the program has answered.
struct Answer {
  AnswerHeader header;
  QImage picture;
  QByteArray said;
};

class Portal : public testing::Test {
 protected:
  void SetUp() override {
    if (!QFile::exists(QString::fromLatin1(frontEnd)))
      GTEST_SKIP() << "the desktop portal isn't installed";
    store = session.start({QString::fromLatin1(permissionStore)});
    portal = session.start({QString::fromLatin1(frontEnd)});
    const QDBusConnection bus = QDBusConnection::connectToBus(session.busAddress(), u"test"_s);
    until("the portal is there", [&] {
      return bus.interface()->isServiceRegistered(u"org.freedesktop.portal.Desktop"_s).value() &&
             bus.interface()->isServiceRegistered(u"org.freedesktop.impl.portal.PermissionStore"_s).value();
    });
    picture.fill(QColor(0x12, 0x34, 0x56));
    picture.setPixelColor(2, 1, QColor(0xfe, 0xdc, 0xba));
    backend.screenshot = [this](bool) { return given(fileWith(picture)); };
  }
  void TearDown() override { QDBusConnection::disconnectFromBus(u"test"_s); }

  /// A file of the portal's own, made now.
  [[nodiscard]] QString fileWith(const QImage& image) const {
    const QString path = session.home(u"shot %1.png"_s.arg(backend.calls.size()));
    EXPECT_TRUE(image.save(path));
    return path;
  }
  [[nodiscard]] static std::pair<uint, QVariantMap> given(const QString& path) {
    return {0, {{u"uri"_s, QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())}}};
  }

  [[nodiscard]] Answer ask(const QString& command, int patience = 20000) const {
    const QString file = session.home(u"answer"_s);
    QFile::remove(file);
    // The shell opens it as the tool does, to be read and written.
    const auto program = session.start({u"sh"_s, u"-c"_s, u"exec \"$0\" \"$@\" 1<>'%1'"_s.arg(file),
                                        QStringLiteral(SORREL_CAPTURE_SERVICES), command, u"--patience"_s,
                                        QString::number(patience), u"OUTPUT"_s});
    until("the program has ended", [&] { return !program->isRunning(); });
    Answer answer{{}, {}, program->errors()};
    const QByteArray bytes = contentsOf(file);
    if (bytes.size() < qsizetype(sizeof answer.header))
      return answer;
    memcpy(&answer.header, bytes.constData(), sizeof answer.header);
    if (answer.header.pictures == 0)
      return answer;
    PictureHeader shape;
    memcpy(&shape, bytes.constData() + sizeof answer.header, sizeof shape);
    answer.picture =
        QImage(reinterpret_cast<const uchar*>(bytes.constData()) + sizeof answer.header + sizeof shape,
               shape.width, shape.height, QImage::Format_RGB32)
            .copy();
    return answer;
  }

  Session session;
  std::unique_ptr<Program> store, portal;
  ScreenshotBackend backend{session.busAddress()};
  QImage picture{4, 3, QImage::Format_RGB32};
};

}  // namespace

TEST(Notes, areShownInTheDesktopsOwnWay) {
  const Session session;
  const QStringList words{u"화면을 볼 수 없음"_s, u"One line,\n<another>"_s};
  const QStringList command = QStringList{QStringLiteral(SORREL_CAPTURE_SERVICES), u"notify"_s} + words;
  EXPECT_EQ(session.start(command)->waitForEnd(), 1) << "nobody is there to show it";
  const Notifications desktop(session.busAddress());
  const auto program = session.start(command);
  until("the program has ended", [&] { return !program->isRunning(); });
  EXPECT_EQ(program->waitForEnd(), 0);
  ASSERT_EQ(desktop.shown.size(), 1);
  EXPECT_EQ(desktop.shown.first().mid(2, 3), QVariantList({u"org.sorrel.Sorrel"_s, words[0], words[1]}));
}

TEST_F(Portal, givesThePictureOfTheScreenAndItsFileIsDeleted) {
  for (const int questions : {1, 1}) {  // asked for leave once
    const Answer answer = ask(u"picture"_s);
    EXPECT_EQ(answer.header.kind, AnswerHeader::Frozen) << answer.said.constData();
    EXPECT_EQ(answer.picture, picture);
    EXPECT_EQ(backend.calls.count(u"AccessDialog"_s), questions);
    EXPECT_TRUE(QDir(session.home()).entryList({u"*.png"_s}).isEmpty());
  }
  EXPECT_EQ(ask(u"color"_s).header.kind, AnswerHeader::Frozen) << "for the tool's own magnifier";
}

TEST_F(Portal, keepsARefusalUntilTheUserTakesItBack) {
  backend.leave = Leave::Denied;
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(ask(u"picture"_s).header.kind, AnswerHeader::Refused);
  EXPECT_EQ(backend.calls, QStringList{u"AccessDialog"_s});

  const Answer color = ask(u"color"_s);
  EXPECT_EQ(color.header.kind, AnswerHeader::Color);
  EXPECT_EQ(color.header.color, 0x4080ffU);
  EXPECT_FALSE(backend.calls.contains(u"Screenshot"_s));

  const auto askAgain = session.start({QStringLiteral(SORREL_CAPTURE_SERVICES), u"ask-again"_s});
  EXPECT_EQ(askAgain->waitForEnd(), 0);
  backend.leave = Leave::Granted;
  EXPECT_EQ(ask(u"picture"_s).header.kind, AnswerHeader::Frozen);
}

TEST_F(Portal, letsTheUserSelectWhereItCantDoWithout) {
  backend.screenshot = [&](bool isInteractive) {
    return isInteractive ? given(fileWith(picture)) : std::pair<uint, QVariantMap>(2, {});
  };
  const Answer answer = ask(u"picture"_s);
  EXPECT_EQ(answer.header.kind, AnswerHeader::Selected) << answer.said.constData();
  EXPECT_EQ(answer.picture, picture);

  backend.screenshot = [](bool) { return std::pair<uint, QVariantMap>(1, {}); };
  EXPECT_EQ(ask(u"picture"_s).header.kind, AnswerHeader::Nothing) << "cancelled";
}

TEST_F(Portal, isWaitedForNoLongerThanThePatience) {
  backend.screenshot = [](bool) { return std::nullopt; };
  const Answer answer = ask(u"picture"_s, 300);
  EXPECT_EQ(answer.header.kind, AnswerHeader::Nothing);
  EXPECT_TRUE(answer.said.contains("doesn't answer")) << answer.said.constData();
}

TEST_F(Portal, answeringJunkGivesNothingAndLosesNothing) {
  const QString older = session.write(u"older.txt"_s, "mine");
  setModified(older, QDateTime::currentDateTime().addSecs(-3600));
  const QString text = u"shot.png"_s;
  const std::function<QVariantMap()> answers[] = {
      [] { return QVariantMap{}; },
      [] {
        return QVariantMap{{u"uri"_s, 7}};
      },
      [] {
        return QVariantMap{{u"uri"_s, u"https://example.org/shot.png"_s}};
      },
      [] {
        return QVariantMap{{u"uri"_s, u"file:///nowhere/%zz.png"_s}};
      },
      [&] { return given(session.home(u"missing.png"_s)).second; },
      [&] { return given(older).second; },
      [&] { return given(session.write(text, "no picture")).second; }};
  for (const auto& each : answers) {
    backend.screenshot = [&](bool) { return std::pair(0U, each()); };
    const Answer answer = ask(u"picture"_s);
    EXPECT_EQ(answer.header.kind, AnswerHeader::Nothing);
    EXPECT_TRUE(answer.said.startsWith("screencapture: ")) << answer.said.constData();
  }
  EXPECT_TRUE(QFile::exists(older)) << "it was there before anything was asked";
  EXPECT_FALSE(QFile::exists(session.home(text))) << "the portal's own, picture or not";
}
