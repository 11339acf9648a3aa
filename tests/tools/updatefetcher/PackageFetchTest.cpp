#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"
#include "tests/tools/updatefetcher/Fetcher.h"

#include <QDir>

using namespace Qt::StringLiterals;
using platform::UpdateProblem;
using testing_support::contentsOf;
using testing_support::HttpRequest;
using testing_support::HttpServer;

namespace {

QByteArray contents(char seed) {
  QByteArray bytes(300000, '\0');
  for (qsizetype i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<char>(i * i / 7 + seed);
  return bytes;
}

class PackageFetchTest : public FetcherTest {
 protected:
  Fetched fetch(const QStringList& limits = {}) const {
    return runFetcher(limits + QStringList{u"package"_s, server.address(u"/s.deb"_s),
                                           QString::fromLatin1(signer.publicKey()), signature,
                                           QString::number(package.size()), path});
  }
  /// A server that has this file.
  void serve(const QByteArray& file) {
    answering = [file](const HttpRequest& request) { return HttpServer::file(file, request); };
  }
  /// One whose connection breaks once these bytes are out.
  void serveUntil(qsizetype end) {
    answering = [this, end](const HttpRequest& request) {
      auto answer = HttpServer::file(package, request);
      answer.bytes.truncate(answer.bytes.indexOf("\r\n\r\n") + 4 + end);
      return answer;
    };
  }
  [[nodiscard]] QStringList files() const {
    return QDir(home.path(u".cache/Sorrel/updates"_s)).entryList(QDir::Files | QDir::Hidden);
  }
  /// The ranges that were asked for since the last question.
  QList<QByteArray> ranges() {
    QList<QByteArray> all;
    for (; seen < server.requests().size(); ++seen)
      all << server.requests()[seen].headers.value("range");
    return all;
  }

  const testing_support::ScratchHome home;
  const QString path = home.path(u".cache/Sorrel/updates/sorrel_1.10.deb"_s);
  const QByteArray package = contents(1);
  const QString signature = QString::fromLatin1(signer.signature(package));
  qsizetype seen = 0;
};

TEST_F(PackageFetchTest, IsThereOnceItIsWholeAndVerified) {
  serve(package);
  EXPECT_EQ(fetch().status, good);
  EXPECT_EQ(contentsOf(path), package);
  EXPECT_EQ(files(), QStringList{u"sorrel_1.10.deb"_s});
  EXPECT_EQ(fetch().status, good);
  EXPECT_EQ(ranges().size(), 1) << "what is there isn't asked for again";
  testing_support::writeFile(path, contents(2));
  EXPECT_EQ(fetch().status, good);
  EXPECT_EQ(contentsOf(path), package) << "what only has its name doesn't count";
}

TEST_F(PackageFetchTest, ACutOffDownloadGoesOn) {
  serveUntil(100000);
  EXPECT_EQ(fetch().status, status(UpdateProblem::CutOff));
  EXPECT_EQ(files(), QStringList{u"sorrel_1.10.deb.part"_s}) << "half of it never counts";
  serveUntil(50000);
  EXPECT_EQ(fetch().status, status(UpdateProblem::CutOff));
  serve(package);
  EXPECT_EQ(fetch().status, good);
  EXPECT_EQ(ranges(), QList<QByteArray>({"", "bytes=100000-", "bytes=150000-"}));
  EXPECT_EQ(contentsOf(path), package);
  EXPECT_EQ(files().size(), 1);
}

TEST_F(PackageFetchTest, StartsOverWhereItCantGoOn) {
  const QString part = path + u".part"_s;
  const auto startsOver = [&](const QByteArray& begun, const QList<QByteArray>& asked) {
    QFile::remove(path);
    testing_support::writeFile(part, begun);
    EXPECT_EQ(fetch().status, good);
    EXPECT_EQ(ranges(), asked);
    EXPECT_EQ(contentsOf(path), package);
    EXPECT_EQ(files().size(), 1);
  };
  serve(package);
  startsOver(contents(2).first(1000), {"bytes=1000-", ""});  // changed between
  startsOver(contents(2), {""});
  startsOver(package + "more", {""});
  answering = [this](const HttpRequest&) { return HttpServer::answer(package); };
  startsOver(package.first(1000), {"bytes=1000-", ""});  // a server that knows no ranges
}

TEST_F(PackageFetchTest, ABadPackageLeavesNothing) {
  QByteArray changed = package;
  changed[200000] = static_cast<char>(changed[200000] + 1);
  const auto statusWith = [&](const HttpServer::Answering& server) {
    answering = server;
    return fetch().status;
  };
  const auto file = [](const QByteArray& bytes) {
    return [bytes](const HttpRequest& request) { return HttpServer::file(bytes, request); };
  };
  EXPECT_EQ(statusWith(file(changed)), status(UpdateProblem::Forged));
  EXPECT_EQ(files(), QStringList());
  EXPECT_EQ(statusWith(file(package.chopped(1))), status(UpdateProblem::Forged));
  EXPECT_EQ(statusWith(file(package + "x")), status(UpdateProblem::TooLarge));
  EXPECT_EQ(statusWith([&](const HttpRequest&) {
              return HttpServer::Answer{"HTTP/1.1 200 OK\r\n\r\n" + package + package};
            }),
            status(UpdateProblem::TooLarge));
  EXPECT_EQ(statusWith([](const HttpRequest&) { return HttpServer::answer({}, "410 Gone"); }),
            status(UpdateProblem::Refused));
  EXPECT_EQ(files(), QStringList());
}

TEST_F(PackageFetchTest, TouchesNothingThatItDidntMake) {
  serve(package);
  const QString other = home.write(u"other"_s, "mine");
  home.write(u".cache/Sorrel/updates/x"_s);
  ASSERT_TRUE(QFile::link(other, path + u".part"_s));
  EXPECT_EQ(fetch().status, status(UpdateProblem::Unwritable));
  EXPECT_EQ(contentsOf(other), "mine");
  QFile::remove(path + u".part"_s);
  QDir(home.path(u".cache/Sorrel/updates"_s)).removeRecursively();
  home.write(u".cache/Sorrel/updates"_s);  // a file in the folder's place
  EXPECT_EQ(fetch().status, status(UpdateProblem::Unwritable));
}

}  // namespace
