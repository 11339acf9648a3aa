#include "platform/updater/FeedUpdater.h"

#include "platform/base/Locations.h"
#include "platform/base/Log.h"
#include "platform/updater/UpdateDecision.h"

#include <QDir>
#include <QSysInfo>

namespace platform {
namespace {

using namespace std::chrono_literals;

// A look costs nothing where no check is due. It is made often, since time that the machine sleeps isn't
// counted.
constexpr auto firstLookAfter = 1min;
constexpr auto lookEvery = 1h;
constexpr auto lookTolerance = 10min;

UpdateProblem problemOf(const TaskAnswer& answer) {
  const auto problem = static_cast<UpdateProblem>(answer.status);
  const bool isKnown = problem >= UpdateProblem::Unreachable && problem <= UpdateProblem::Unwritable;
  return isKnown ? problem : UpdateProblem::Broken;
}

QDir downloads() {
  return {Locations::cache() + QStringLiteral("/updates")};
}

/// What earlier versions have left goes.
void keepDownloads(const QString& name) {
  for (const QString& file : downloads().entryList(QDir::Files | QDir::Hidden))
    if (name.isEmpty() || !file.startsWith(name))
      downloads().remove(file);
}

}  // namespace

FeedUpdater::FeedUpdater(UpdateSource source, Version running, Told tell)
    : source(std::move(source)), running(std::move(running)), tell(std::move(tell)) {
}

void FeedUpdater::setAutomaticallyChecksForUpdates(bool isAutomatic) {
  if (!isAutomatic) {
    firstLook.cancel();
    nextLooks.cancel();
    return;
  }
  firstLook = MainQueue::main().asyncAfter(firstLookAfter, [this] { checkIfDue(); });
  nextLooks = MainQueue::main().scheduleRepeating(lookEvery, lookTolerance, [this] { checkIfDue(); });
}

void FeedUpdater::checkIfDue() {
  const qint64 last = UserDefaults::standard().value(UpdaterSettings::lastCheck);
  if (isCheckDue(QDateTime::fromSecsSinceEpoch(last, Qt::UTC), MainQueue::main().now()))
    begin();
}

void FeedUpdater::checkForUpdates() {
  isAsked = true;
  begin();
}

Subscription FeedUpdater::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

void FeedUpdater::begin() {
  if (present != Activity::None)
    return;
  UserDefaults::standard().set(UpdaterSettings::lastCheck, MainQueue::main().now().toSecsSinceEpoch());
  setActivity(Activity::Checking);
  fetch({QStringLiteral("feed"), source.feed, source.key},
        [this](const TaskAnswer& answer) { takeFeed(answer); });
}

void FeedUpdater::fetch(const QStringList& arguments,
                        const std::function<void(const TaskAnswer&)>& onAnswer) {
  auto started = ask({Locations::ownTool(QStringLiteral("updatefetcher")), arguments}, onAnswer);
  if (started) {
    fetching = *started;
    return;
  }
  log(QStringLiteral("Sorrel updatefetcher launch failed: ") + started.error().reason);
  onAnswer({});
}

void FeedUpdater::takeFeed(const TaskAnswer& answer) {
  if (!answer.isGood)
    return finish(problemOf(answer));
  const Result<Feed> feed = parseFeed(answer.output);
  if (!feed) {
    log(QStringLiteral("Sorrel update feed refused: ") + feed.error().reason);
    return finish(UpdateProblem::Malformed);
  }
  auto& defaults = UserDefaults::standard();
  if (feed->serial < defaults.value(UpdaterSettings::feedSerial))
    return finish(UpdateProblem::Outdated);
  if (feed->serial > defaults.value(UpdaterSettings::feedSerial))
    defaults.set(UpdaterSettings::feedSerial, feed->serial);
  if (const auto news = newsIn(*feed, running))
    return takeNews(*news);
  keepDownloads({});
  finish(UpdateReport::UpToDate{});
}

void FeedUpdater::takeNews(const Feed::Release& release) {
  const auto package = release.packages.find(QSysInfo::buildCpuArchitecture());
  const bool isWanted = UserDefaults::standard().value(UpdaterSettings::automaticallyUpdate);
  if (isWanted && package != release.packages.end())
    fetchPackage(release, *package);
  else
    finish(UpdateReport::Newer{release, {}, {}});
}

void FeedUpdater::fetchPackage(const Feed::Release& release, const Feed::Package& package) {
  const QString name = QStringLiteral("sorrel_%1.deb").arg(release.version.text());
  const QString path = downloads().filePath(name);
  keepDownloads(name);
  setActivity(Activity::Downloading);
  fetch({QStringLiteral("package"), package.address.toString(QUrl::FullyEncoded), source.key,
         QString::fromLatin1(package.signature), QString::number(package.size), path},
        [this, release, path](const TaskAnswer& answer) {
          // Without the package there is still the page.
          finish(answer.isGood ? UpdateReport::Newer{release, path, {}}
                               : UpdateReport::Newer{release, {}, problemOf(answer)});
        });
}

void FeedUpdater::finish(const Outcome& outcome) {
  fetching.reset();
  setActivity(Activity::None);
  const bool wasAsked = std::exchange(isAsked, false);
  auto& defaults = UserDefaults::standard();
  const auto* const news = std::get_if<UpdateReport::Newer>(&outcome);
  const bool isOldNews =
      !news || defaults.value(UpdaterSettings::announcedVersion) == news->release.version.text();
  if (isOldNews && !wasAsked)
    return;
  if (!isOldNews)
    defaults.set(UpdaterSettings::announcedVersion, news->release.version.text());
  tell({outcome, wasAsked});
}

void FeedUpdater::setActivity(Activity next) {
  present = next;
  observers.tell();
}

}  // namespace platform
