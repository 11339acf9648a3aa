#include "app/capture/RetentionService.h"

#include "app/capture/ScreenshotStore.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"
#include "platform/base/UserDefaults.h"

namespace sorrel::RetentionService {
namespace {

constexpr char autoDeleteDaysKey[] = "autoDeleteDays";
constexpr qint64 defaultDays = 30;

/// Some 270 years: beyond it a limit means the same, and the range of dates isn't left.
constexpr qint64 mostDays = 100'000;

}  // namespace

qint64 retentionDays() {
  const auto& defaults = platform::UserDefaults::standard();
  const auto key = QString::fromLatin1(autoDeleteDaysKey);
  return defaults.contains(key) ? defaults.integer(key) : defaultDays;
}

int sweep() {
  const qint64 days = retentionDays();
  if (days < 1)
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
