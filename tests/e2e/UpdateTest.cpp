// What the program tells of newer versions.

#include "tests/e2e/ScreenReader.h"
#include "tests/e2e/Sorrel.h"
#include "tests/support/Files.h"
#include "tests/support/HttpServer.h"
#include "tests/support/UpdateSigner.h"

#include <QDir>
#include <QSysInfo>

#include <filesystem>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

/// The built program in a folder of its own, as if it were built to get its updates from this feed.
QString programWithFeed(const QTemporaryDir& folder, const QString& feed, const QByteArray& key) {
  const auto built = QFileInfo(Sorrel::built()).dir().filesystemAbsolutePath().parent_path();
  const std::filesystem::path root = folder.path().toStdString();
  std::filesystem::create_directory(root / "bin");
  std::filesystem::copy(built / "bin/sorrel", root / "bin/sorrel");
  for (const char* const name : {"libexec", "share"})
    std::filesystem::copy(built / name, root / name, std::filesystem::copy_options::recursive);
  writeFile(folder.filePath(u"share/sorrel/information.json"_s),
            R"({"updateFeed":")" + feed.toUtf8() + R"(","updateKey":")" + key + "\"}");
  return folder.filePath(u"bin/sorrel"_s);
}

TEST(Updates, TheMenusRowTellsOfANewerVersionAndHasItsPackage) {
  const UpdateSigner signer;
  const QByteArray package = "the package of version 99";
  QByteArray feed;
  HttpServer server([&](const HttpRequest& request) {
    return HttpServer::file(request.path == "/feed" ? feed : package, request);
  });
  feed =
      signer.feed(R"({"format":"sorrel-feed-1","serial":1,"releases":[{"version":"99.0",
      "page":"https://example.org/","notes":{"en":"Much faster."},"packages":{")" +
                  QSysInfo::buildCpuArchitecture().toUtf8() + R"(":{"address":")" +
                  server.address(u"/sorrel.deb"_s).toUtf8() + "\"," + signer.packageEntry(package) + "}}}]}");
  const QTemporaryDir folder;
  Desktop desktop({.assistiveTechnology = AssistiveTechnology::Listening});
  Sorrel sorrel(desktop, programWithFeed(folder, server.address(u"/feed"_s), signer.publicKey()));
  sorrel.openMenu();
  for (const int key : {KEY_DOWN, KEY_DOWN, KEY_DOWN, KEY_ENTER})
    desktop.input().tapKey(key);

  const ScreenReader reader(desktop.busAddress());
  QStringList names;
  until("the news are told", [&] {
    names.clear();
    for (const ScreenReader::Element& element : reader.elements())
      names << element.name;
    return names.contains(u"Sorrel 99.0 is available"_s) && names.contains(u"Install…"_s);
  });
  EXPECT_TRUE(names.contains(u"Open Page"_s)) << qPrintable(names.join(u'|'));
  EXPECT_EQ(contentsOf(desktop.home(u".cache/Sorrel/updates/sorrel_99.0.deb"_s)), package);
}

}  // namespace
}  // namespace e2e
