#include "platform/updater/UpdateDecision.h"

namespace platform {

std::optional<Feed::Release> newsIn(const Feed& feed, const Version& current) {
  const Feed::Release* newest = nullptr;
  for (const Feed::Release& release : feed.releases) {
    const bool isMeant = !release.version.isPreRelease() || current.isPreRelease();
    if (isMeant && release.version > (newest ? newest->version : current))
      newest = &release;
  }
  return newest ? std::optional(*newest) : std::nullopt;
}

bool isCheckDue(const QDateTime& lastCheck, const QDateTime& now) {
  return lastCheck > now || lastCheck.addDays(1) <= now;
}

}  // namespace platform
