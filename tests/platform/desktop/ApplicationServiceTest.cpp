#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/ApplicationService.h"
#include "tests/support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::until;

namespace {

/// Another program on the bus, which calls Sorrel as the desktop does.
class ApplicationServiceTest : public testing::Test {
 protected:
  ~ApplicationServiceTest() override { QDBusConnection::disconnectFromBus(caller.name()); }

  QDBusMessage call(const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(u"org.sorrel.Sorrel"_s, u"/org/sorrel/Sorrel"_s,
                                                          u"org.freedesktop.Application"_s, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    const QDBusPendingCallWatcher answer(caller.asyncCall(message));
    until("an answer", [&] { return answer.isFinished(); });
    return answer.reply();
  }
  /// What has been called, each with the token that came with it.
  void note(const QString& what) { calls << what + u'/' + QString::fromUtf8(ActivationToken::take()); }

  QStringList calls;
  const ApplicationService::Handlers handlers{[this] { note(u"activate"_s); },
                                              [this](const QList<QUrl>& urls) {
                                                for (const QUrl& url : urls)
                                                  note(url.isValid() ? url.toLocalFile() : u"invalid"_s);
                                              },
                                              [this](const QByteArray& action) {
                                                note(QString::fromUtf8(action));
                                                return action == "capture";
                                              }};
  QDBusConnection caller =
      QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"a launcher"_s);
};

TEST_F(ApplicationServiceTest, CallsArriveWithTheirTokens) {
  {
    const ApplicationService service(handlers);
    until("the name is taken",
          [this] { return caller.interface()->isServiceRegistered(u"org.sorrel.Sorrel"_s).value(); });
    const auto fine = [&](const QString& method, const QVariantList& arguments) {
      const QDBusMessage answer = call(method, arguments);
      EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    };
    const QVariantMap x11{{u"desktop-startup-id"_s, u"x_TIME5"_s}};
    QVariantMap both = x11;
    both.insert(u"activation-token"_s, u"w"_s);
    fine(u"Activate"_s, {x11});
    ActivationToken::keep("an older call's");
    fine(u"ActivateAction"_s, {u"capture"_s, QVariant(QVariantList()), QVariantMap()});
    fine(u"ActivateAction"_s, {u"capture"_s, QVariant(QVariantList()), both});
    fine(u"Open"_s, {QStringList{u"file:///x/a%20b.png"_s, u"file:///x/%zz"_s}, both});
    EXPECT_EQ(call(u"ActivateAction"_s, {u"explode"_s, QVariant(QVariantList()), QVariantMap()}).errorName(),
              u"org.freedesktop.DBus.Error.InvalidArgs"_s);
    EXPECT_EQ(calls, QStringList({u"activate/x_TIME5"_s, u"capture/"_s, u"capture/w"_s, u"/x/a b.png/w"_s,
                                  u"invalid/"_s, u"explode/"_s}));
  }
  EXPECT_EQ(call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ErrorMessage) << "its end";
}

}  // namespace
