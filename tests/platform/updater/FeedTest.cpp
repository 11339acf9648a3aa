#include "platform/updater/Feed.h"
#include "platform/updater/UpdateDecision.h"
#include "platform/updater/UpdateSource.h"
#include "tests/support/ScratchHome.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

const QString signature = QString::fromLatin1(QByteArray(64, 's').toBase64());

/// A feed that is right, with one value replaced: the path's parts are members, or the first of a list.
QByteArray feedWith(const QStringList& path = {}, const QJsonValue& value = {}) {
  const QJsonObject package{
      {u"address"_s, u"https://example.org/a.deb"_s}, {u"size"_s, 1000}, {u"signature"_s, signature}};
  const QJsonObject release{{u"version"_s, u"1.10"_s},
                            {u"page"_s, u"https://example.org/1.10"_s},
                            {u"notes"_s, QJsonObject{{u"en"_s, u" Faster. "_s}, {u"ko"_s, u"빨라짐"_s}}},
                            {u"packages"_s, QJsonObject{{u"x86_64"_s, package}}},
                            {u"of a later form"_s, true}};
  const QJsonObject feed{
      {u"format"_s, u"sorrel-feed-1"_s}, {u"serial"_s, 7}, {u"releases"_s, QJsonArray{release}}};
  const std::function<QJsonValue(const QJsonValue&, qsizetype)> replaced = [&](const QJsonValue& in,
                                                                               qsizetype at) -> QJsonValue {
    if (at == path.size())
      return value;
    if (in.isArray())
      return QJsonArray{replaced(in.toArray().first(), at)};
    QJsonObject object = in.toObject();
    object[path[at]] = replaced(object[path[at]], at + 1);
    return object;
  };
  return QJsonDocument((path.isEmpty() ? feed : replaced(feed, 0).toObject())).toJson();
}

TEST(FeedTest, TellsWhatItHolds) {
  const auto feed = parseFeed(feedWith());
  ASSERT_TRUE(feed) << qPrintable(feed.error().reason);
  EXPECT_EQ(feed->serial, 7);
  ASSERT_EQ(feed->releases.size(), 1u);
  const Feed::Release& release = feed->releases.front();
  EXPECT_EQ(release.version.text(), u"1.10"_s);
  EXPECT_EQ(release.page, QUrl(u"https://example.org/1.10"_s));
  EXPECT_EQ(release.notesIn(u"ko"_s), u"빨라짐"_s);
  EXPECT_EQ(release.notesIn(u"fr"_s), u"Faster."_s);
  EXPECT_EQ(release.packages[u"x86_64"_s],
            (Feed::Package{QUrl(u"https://example.org/a.deb"_s), 1000, signature.toLatin1()}));
}

TEST(FeedTest, RefusesWhatBreaksItsForm) {
  const QStringList release{u"releases"_s}, notes{u"releases"_s, u"notes"_s},
      package{u"releases"_s, u"packages"_s, u"x86_64"_s};
  QJsonArray many;
  for (int i = 0; i <= Feed::mostReleases; ++i)
    many.append(QJsonDocument::fromJson(feedWith())[u"releases"][0]);
  const std::pair<QStringList, QJsonValue> cases[] = {
      {{u"format"_s}, u"sorrel-feed-2"_s},
      {{u"serial"_s}, 0},
      {{u"serial"_s}, 1.5},
      {{u"serial"_s}, 1e300},
      {{u"serial"_s}, u"7"_s},
      {{u"releases"_s}, QJsonValue::Null},
      {{u"releases"_s}, many},
      {{u"releases"_s}, QJsonArray{1}},
      {release + QStringList{u"version"_s}, u"1.x"_s},
      {release + QStringList{u"version"_s}, 1.1},
      {release + QStringList{u"page"_s}, QJsonValue::Null},
      {release + QStringList{u"page"_s}, u"http://localhost/"_s},
      {release + QStringList{u"page"_s}, u"file:///etc/passwd"_s},
      {release + QStringList{u"page"_s}, u"javascript:alert(1)"_s},
      {release + QStringList{u"page"_s}, QString(u"https://example.org/"_s + QString(2000, u'a'))},
      {notes, QJsonObject()},
      {notes + QStringList{u"en"_s}, u"  "_s},
      {notes + QStringList{u"en"_s}, QString(Feed::longestText + 1, u'a')},
      {package, 5},
      {package + QStringList{u"address"_s}, u"a.deb"_s},
      {package + QStringList{u"address"_s}, u"https:///a.deb"_s},
      {package + QStringList{u"size"_s}, 0},
      {package + QStringList{u"size"_s}, double(Feed::largestPackage + 1)},
      {package + QStringList{u"signature"_s}, QJsonValue::Null},
      {package + QStringList{u"signature"_s}, signature.left(40)},
      {package + QStringList{u"signature"_s}, QString(u"!"_s + signature.mid(1))},
  };
  for (const auto& [path, value] : cases)
    EXPECT_FALSE(parseFeed(feedWith(path, value)))
        << qPrintable(path.join(u'.')) << ' ' << value.toString().left(100).toStdString();
  const QByteArray whole = feedWith();
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("[]"), whole.left(whole.size() / 2), whole + "x", QByteArray(100000, '['),
        QByteArray(whole + QByteArray(Feed::mostBytes, ' '))})
    EXPECT_FALSE(parseFeed(bytes)) << bytes.left(40).data();
}

TEST(UpdateDecisionTest, OffersTheNewestThatIsMeantForThisUser) {
  Feed feed;
  for (const auto& version : {u"1.9"_s, u"1.11-beta"_s, u"1.10"_s, u"1.2"_s})
    feed.releases.push_back({*Version::parse(version), {}, {}, {}});
  const std::pair<QString, QString> cases[] = {
      {u"1.8"_s, u"1.10"_s},         {u"1.9"_s, u"1.10"_s}, {u"1.10-rc"_s, u"1.11-beta"_s},
      {u"1.10-9"_s, u"1.11-beta"_s}, {u"1.10"_s, {}},       {u"1.10.0.1"_s, {}},
      {u"1.11-beta"_s, {}},          {u"2.0"_s, {}},
  };
  for (const auto& [running, offered] : cases) {
    const auto news = newsIn(feed, *Version::parse(running));
    EXPECT_EQ(news ? news->version.text() : QString(), offered) << qPrintable(running);
  }
}

TEST(UpdateSourceTest, IsThereWhereTheBuildNamesOne) {
  const testing_support::ScratchHome home;
  const QByteArray feed = "https://example.org/feed", key = QByteArray(32, 'k').toBase64();
  const auto read = [&](const QByteArray& address, const QByteArray& named) {
    return UpdateSource::read(home.write(
        u"information.json"_s, R"({"updateFeed":")" + address + R"(","updateKey":")" + named + "\"}"));
  };
  EXPECT_TRUE(read("", "") && !*read("", ""));
  EXPECT_TRUE(read(feed, key) && *read(feed, key));
  EXPECT_FALSE(read(feed, "") || read("", key) || read(feed, key.left(20)));
}

}  // namespace
