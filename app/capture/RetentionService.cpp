#include "app/capture/RetentionService.h"

#include "app/capture/ScreenshotStore.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"

namespace sorrel::RetentionService {
namespace {

/// Some 270 years: beyond it a limit means the same, and the range of dates isn't left.
constexpr qint64 mostDays = 100'000;

}  // namespace

qint64 retentionDays() {
  return platform::UserDefaults::standard().value(SettingsKeys::autoDeleteDays);
}

int sweep() {
  const qint64 days = retentionDays();
  // Where the settings couldn't be read the user may well have switched this off.
  if (days < 1 || platform::UserDefaults::standard().isInDoubt())
    return 0;
  const platform::Date now(std::chrono::milliseconds(platform::MainQueue::main().now().toMSecsSinceEpoch()));
  const platform::Date cutoff = now - std::chrono::days(std::min(days, mostDays));
  int count = 0;
  for (const Screenshot& screenshot : ScreenshotStore::all()) {
    if (screenshot.date >= cutoff)
      continue;
    ScreenshotStore::moveToTrash(screenshot);
    ++count;
  }
  if (count > 0)
    platform::log(QStringLiteral("Sorrel retention: trashed %1 screenshot(s) older than %2 day(s).")
                      .arg(count)
                      .arg(days));
  return count;
}

}  // namespace sorrel::RetentionService
