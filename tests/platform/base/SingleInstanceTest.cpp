#include "platform/base/Locations.h"
#include "platform/base/SingleInstance.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <future>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

using namespace Qt::StringLiterals;
using namespace platform;
using namespace std::chrono_literals;
using testing_support::ScratchHome;
using testing_support::until;
using Standing = SingleInstance::Standing;

namespace {

/// Another start of the program, which waits for the answer of the first one.
std::future<Standing> startAnother(LaunchRequest request, std::chrono::milliseconds patience = 20s) {
  return std::async(std::launch::async, [request = std::move(request), patience] {
    return SingleInstance(request, patience).standing();
  });
}

bool isReady(const std::future<Standing>& start) {
  return start.wait_for(0s) == std::future_status::ready;
}

/// What the first instance hears, one text for each request.
void listen(SingleInstance& first, QList<QByteArray>& heard) {
  first.setRequestHandler(
      [&](const LaunchRequest& request) { heard << request.action + '/' + request.activationToken; });
}

TEST(SingleInstanceTest, ASessionIsTheSameByAllItsNames) {
  const auto x11 = [](const char* display) {
    return SingleInstance::sessionName(QString::fromLatin1(display), {});
  };
  for (const char* same : {":0.0", ":0.1", "unix:0", "unix:0.0", "unix/:0", "host/unix:0"})
    EXPECT_EQ(x11(same), x11(":0")) << same;
  for (const char* another : {":1", ":10", "localhost:0", "host:0", "odd", ""})
    EXPECT_NE(x11(another), x11(":0")) << another;
  EXPECT_EQ(x11("Host:10.0"), x11("tcp/host:10"));
  EXPECT_NE(x11("host:0"), x11("host:1"));
  const ScratchHome home;
  const auto wayland = [](const QString& name) { return SingleInstance::sessionName(u":0"_s, name); };
  EXPECT_EQ(wayland(u"wayland-0"_s), wayland(home.path(u".runtime/wayland-0"_s)));
  EXPECT_NE(wayland(u"wayland-0"_s), wayland(u"wayland-1"_s));
  EXPECT_NE(wayland(u"wayland-0"_s), x11(":0"));
}

TEST(SingleInstanceTest, ARequestPassesAsItIsAndJunkIsNone) {
  for (const LaunchRequest& each :
       {LaunchRequest{}, LaunchRequest{"capture-and-edit", "xfce/1-0-host_TIME77"},
        LaunchRequest{"quit", "토큰"}})
    EXPECT_EQ(decodedLaunchRequest(encoded(each)), each) << each.action.toStdString();
  EXPECT_EQ(decodedLaunchRequest(encoded({"quit", QByteArray(100'000, 't')})), LaunchRequest({"quit", {}}))
      << "a token of any length stops no action";
  const QByteArray nul(1, '\0');
  for (const QByteArray& junk :
       {QByteArray(), QByteArray("capture"), nul + nul, "Capture" + nul, "cap ture" + nul,
        QByteArray(65, 'a') + nul, "quit" + nul + QByteArray(5'000, 't')})
    EXPECT_FALSE(decodedLaunchRequest(junk)) << junk.left(20).toStdString();
}

TEST(SingleInstanceTest, TheFirstHearsWhatTheOthersWereStartedFor) {
  const ScratchHome home;
  auto first = std::make_unique<SingleInstance>();
  ASSERT_EQ(first->standing(), Standing::First);
  QList<QByteArray> heard;
  // A burst, of which the half comes while the first one is still starting.
  std::vector<std::future<Standing>> starts;
  for (int i = 0; i < 40; ++i) {
    starts.push_back(startAnother({"capture", QByteArray::number(i)}));
    if (i == 20)
      listen(*first, heard);
  }
  until("all are heard", [&] { return std::ranges::all_of(starts, isReady); });
  for (auto& start : starts)
    EXPECT_EQ(start.get(), Standing::Delivered);
  EXPECT_EQ(heard.size(), 40);
  EXPECT_EQ(QSet<QByteArray>(heard.begin(), heard.end()).size(), 40) << "each once";

  qputenv("DISPLAY", "another:7.1");
  EXPECT_EQ(SingleInstance().standing(), Standing::First) << "another display has an instance of its own";
  qunsetenv("DISPLAY");
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home.write(u"not a folder"_s)));
  EXPECT_EQ(SingleInstance().standing(), Standing::First) << "without a folder for it the program still runs";
}

TEST(SingleInstanceTest, ARequestToOneThatEndsMakesTheNextTheFirst) {
  const ScratchHome home;
  auto first = std::make_unique<SingleInstance>();
  auto next = startAnother({"capture", {}});
  EXPECT_EQ(next.wait_for(50ms), std::future_status::timeout) << "the first one hears nothing yet";
  first.reset();
  EXPECT_EQ(next.get(), Standing::First);
}

TEST(SingleInstanceTest, WhoGaveUpIsNotServedLaterAndJunkIsPassedOver) {
  const ScratchHome home;
  SingleInstance first;
  EXPECT_EQ(startAnother({"capture", {}}, 50ms).get(), Standing::Unanswered);

  const QFileInfoList sockets =
      QDir(Locations::runtime())
          .entryInfoList({u"*.socket"_s}, QDir::AllEntries | QDir::System | QDir::Hidden);
  ASSERT_EQ(sockets.size(), 1);
  sockaddr_un address{AF_UNIX, {}};
  std::ranges::copy(QFile::encodeName(sockets.first().filePath()), address.sun_path);
  std::vector<Descriptor> rude;
  for (const QByteArray& message : {QByteArray("junk"), QByteArray(60'000, 'x'), QByteArray()}) {
    rude.emplace_back(socket(AF_UNIX, SOCK_SEQPACKET, 0));
    ASSERT_EQ(connect(rude.back().get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    const auto size = static_cast<size_t>(message.size());  // the last one stays and says nothing
    ASSERT_TRUE(size == 0 || send(rude.back().get(), message.constData(), size, 0) == message.size());
  }
  QList<QByteArray> heard;
  listen(first, heard);
  const auto polite = startAnother({"history", "t"});
  until("the polite one is heard", [&] { return isReady(polite); });
  EXPECT_EQ(heard, QList<QByteArray>({"history/t"}));
}

}  // namespace
