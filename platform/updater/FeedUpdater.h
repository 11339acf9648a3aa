#pragma once

#include "platform/base/MainQueue.h"
#include "platform/base/Task.h"
#include "platform/base/UserDefaults.h"
#include "platform/updater/Feed.h"
#include "platform/updater/UpdateProblem.h"
#include "platform/updater/UpdateSource.h"
#include "platform/updater/Updater.h"

#include <QDateTime>

#include <functional>
#include <variant>

namespace platform {

/// What the updater keeps among the settings.
namespace UpdaterSettings {

/// Whether the packages of new versions are fetched unasked.
inline constexpr SettingsKey<bool> automaticallyUpdate{"SUAutomaticallyUpdate", true};
/// When the last check began, in seconds of Unix time.
inline constexpr SettingsKey<qint64> lastCheck{"lastUpdateCheck"};
/// The greatest serial number of the feeds seen.
inline constexpr SettingsKey<qint64> feedSerial{"updateFeedSerial"};
/// The version that the user was last told of.
inline constexpr SettingsKey<QString> announcedVersion{"announcedUpdate"};

}  // namespace UpdaterSettings

/// What came of a check.
struct UpdateReport {
  struct UpToDate {};
  struct Newer {
    Feed::Release release;
    QString package;  // the path of its package, complete and verified; empty if it isn't there
    std::optional<UpdateProblem> packageProblem;  // why not, where it was to be fetched
  };

  std::variant<UpToDate, Newer, UpdateProblem> outcome;
  bool wasAsked = false;  // by the user, who waits for it
};

/// Learns of newer versions from a feed that the program's makers sign. A program of its own,
/// "updatefetcher", fetches and verifies: nothing of network and cryptography is loaded here. Nothing but the
/// request for the feed leaves the machine, and that for the package where there is news and the user has it
/// fetched.
///
/// Automatic checks are made at most once a day, and told only where there is a version that the user wasn't
/// told of. A check that is asked for is always told; while one is under way, it is that one. Main thread
/// only.
class FeedUpdater : public Updater {
 public:
  using Told = std::function<void(const UpdateReport&)>;

  /// `running` is this program's version.
  FeedUpdater(UpdateSource source, Version running, Told tell);

  void setAutomaticallyChecksForUpdates(bool isAutomatic) override;
  void checkForUpdates() override;
  [[nodiscard]] Activity activity() const override { return present; }
  [[nodiscard]] Subscription observe(std::function<void()> observer) override;

 private:
  using Outcome = decltype(UpdateReport::outcome);

  void checkIfDue();
  void begin();
  void takeFeed(const TaskAnswer& answer);
  void takeNews(const Feed::Release& release);
  void fetchPackage(const Feed::Release& release, const Feed::Package& package);
  void finish(const Outcome& outcome);
  void setActivity(Activity next);
  /// Runs the fetching program; `onAnswer` is called even where it can't be started.
  void fetch(const QStringList& arguments, const std::function<void(const TaskAnswer&)>& onAnswer);

  const UpdateSource source;
  const Version running;
  const Told tell;
  Activity present = Activity::None;
  bool isAsked = false;
  OwnedTask fetching;
  WorkItem firstLook, nextLooks;
  Listeners<> observers;
};

}  // namespace platform
