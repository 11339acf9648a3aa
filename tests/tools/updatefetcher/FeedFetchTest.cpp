#include "tests/support/Program.h"
#include "tests/support/Waiting.h"
#include "tests/tools/updatefetcher/Fetcher.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using platform::UpdateProblem;
using testing_support::HttpRequest;
using testing_support::HttpServer;

namespace {

const QByteArray body = R"({"format":"sorrel-feed-1"})";

class FeedFetchTest : public FetcherTest {
 protected:
  Fetched fetch(const HttpServer::Answer& answer, const QStringList& limits = {}) {
    answering = [answer](const HttpRequest&) { return answer; };
    return fetchFrom(server.address(u"/feed"_s), limits);
  }
  Fetched fetchFrom(const QString& address, const QStringList& limits = {}) const {
    return runFetcher(limits + QStringList{u"feed"_s, address, QString::fromLatin1(signer.publicKey())});
  }
};

TEST_F(FeedFetchTest, PrintsWhatIsSignedAndTellsNothingOfItsUser) {
  const Fetched fetched = fetch(HttpServer::answer(signer.feed(body)));
  EXPECT_EQ(fetched.status, good);
  EXPECT_EQ(fetched.output, body);
  ASSERT_EQ(server.requests().size(), 1);
  EXPECT_EQ(server.requests()[0].headers.keys(), QList<QByteArray>({"accept", "host"}));
}

TEST_F(FeedFetchTest, ABadFeedIsNoneAndEachHasItsReason) {
  const QByteArray whole = signer.feed(body);
  QByteArray changed = whole;
  changed[changed.size() - 2] = '2';
  const testing_support::UpdateSigner stranger;
  const HttpServer::Answer page =
      HttpServer::answer("<html><body>Please log in to this network.</body></html>");
  const QByteArray huge = signer.feed(QByteArray(1 << 20, ' '));
  const auto cut = [](HttpServer::Answer answer) {
    answer.bytes.chop(5);
    return answer;
  };
  const auto redirection = [](const QByteArray& to) {
    return HttpServer::answer("moved", "302 Found", "Location: " + to + "\r\n");
  };
  const struct {
    const char* what;
    HttpServer::Answer answer;
    UpdateProblem problem;
  } cases[] = {
      {"changed", HttpServer::answer(changed), UpdateProblem::Forged},
      {"another's", HttpServer::answer(stranger.feed(body)), UpdateProblem::Forged},
      {"truncated by the server", HttpServer::answer(whole.chopped(5)), UpdateProblem::Forged},
      {"the signature alone", HttpServer::answer(whole.first(88)), UpdateProblem::Malformed},
      {"an empty body", HttpServer::answer(whole.first(89)), UpdateProblem::Forged},
      {"a page", page, UpdateProblem::Malformed},
      {"nothing", HttpServer::answer({}), UpdateProblem::Malformed},
      {"no content", {"HTTP/1.1 204 No Content\r\n\r\n"}, UpdateProblem::Refused},
      {"missing", HttpServer::answer(whole, "404 Not Found"), UpdateProblem::Refused},
      {"cut off", cut(HttpServer::answer(whole)), UpdateProblem::CutOff},
      {"closed", {}, UpdateProblem::Unreachable},
      {"huge", HttpServer::answer(huge), UpdateProblem::TooLarge},
      {"huge and not said", {"HTTP/1.1 200 OK\r\n\r\n" + huge}, UpdateProblem::TooLarge},
      {"no HTTP", {"SSH-2.0-server\r\n"}, UpdateProblem::Malformed},
      {"redirected in circles", redirection("/feed"), UpdateProblem::Redirected},
      {"redirected to less", redirection("http://example.org/feed"), UpdateProblem::Redirected},
      {"redirected to a file", redirection("file:///etc/passwd"), UpdateProblem::Redirected},
  };
  for (const auto& [what, answer, problem] : cases) {
    const Fetched fetched = fetch(answer);
    EXPECT_EQ(fetched.status, status(problem)) << what;
    EXPECT_EQ(fetched.output, QByteArray()) << what;
  }
}

TEST_F(FeedFetchTest, ATardyServerIsLeft) {
  EXPECT_EQ(fetch({{}, true}, {u"--total"_s, u"200"_s}).status, status(UpdateProblem::TooSlow));
  const HttpServer::Answer begun{"HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\nabc", true};
  EXPECT_EQ(fetch(begun, {u"--stalled"_s, u"1"_s}).status, status(UpdateProblem::TooSlow));
}

TEST_F(FeedFetchTest, FollowsToWhatCanBeTrusted) {
  const QByteArray whole = signer.feed(body);
  answering = [&](const HttpRequest& request) {
    return request.path == "/feed"
               ? HttpServer::answer(whole)
               : HttpServer::answer("moved", "301 Moved Permanently", "Location: /feed\r\n");
  };
  EXPECT_EQ(fetchFrom(server.address(u"/old"_s)).output, body);
}

TEST_F(FeedFetchTest, AServerThatIsntThereOrDoesntProveWhoItIs) {
  const QTemporaryDir folder;
  const QString key = folder.filePath(u"key"_s), certificate = folder.filePath(u"certificate"_s);
  ASSERT_EQ(QProcess::execute(u"openssl"_s,
                              {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ed25519"_s, u"-nodes"_s, u"-subj"_s,
                               u"/CN=127.0.0.1"_s, u"-keyout"_s, key, u"-out"_s, certificate}),
            0);
  testing_support::Program secure({u"openssl"_s, u"s_server"_s, u"-accept"_s, u"127.0.0.1:0"_s, u"-www"_s,
                                   u"-key"_s, key, u"-cert"_s, certificate},
                                  QProcessEnvironment::systemEnvironment());
  testing_support::until("it accepts connections",
                         [&] { return secure.output().contains("ACCEPT 127.0.0.1:"); });
  const QString port =
      QString::fromLatin1(secure.output()).section(u"ACCEPT 127.0.0.1:"_s, 1).section(u'\n', 0, 0);
  EXPECT_EQ(fetchFrom(u"https://127.0.0.1:%1/"_s.arg(port)).status, status(UpdateProblem::Insecure))
      << "its own word alone";

  QTcpServer nobody;
  ASSERT_TRUE(nobody.listen(QHostAddress::LocalHost));
  const quint16 unused = nobody.serverPort();
  nobody.close();
  EXPECT_EQ(fetchFrom(u"http://127.0.0.1:%1/"_s.arg(unused)).status, status(UpdateProblem::Unreachable));
}

TEST_F(FeedFetchTest, WrongUseIsTold) {
  const QString address = u"https://example.org/feed"_s, key = QString::fromLatin1(signer.publicKey());
  const QList<QStringList> cases{
      {},
      {u"feed"_s, address, key, key},
      {u"feeds"_s, address, key},
      {u"feed"_s, u"http://example.org/feed"_s, key},
      {u"feed"_s, address, key.chopped(1)},
      {u"--total"_s, u"1s"_s, u"feed"_s, address, key},
      {u"package"_s, address, key, QString::fromLatin1(signer.signature("x")), u"1"_s, u"relative"_s},
      {u"package"_s, address, key, QString::fromLatin1(signer.signature("x")), u"268435457"_s, u"/a"_s},
  };
  for (const QStringList& arguments : cases)
    EXPECT_EQ(runFetcher(arguments).status, 64) << qPrintable(arguments.join(u' '));
}

}  // namespace
