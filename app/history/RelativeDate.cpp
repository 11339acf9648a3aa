#include "app/history/RelativeDate.h"

#include "app/settings/LocalizationManager.h"
#include "platform/base/MainQueue.h"

namespace sorrel {
namespace {

struct Unit {
  qint64 seconds;
  const char* oneKey;
  const char* manyKey;
};

constexpr qint64 day = 86400;
constexpr Unit units[] = {
    {365 * day, "history.date.year", "history.date.years"},
    {30 * day, "history.date.month", "history.date.months"},
    {7 * day, "history.date.week", "history.date.weeks"},
    {day, "history.date.day", "history.date.days"},
    {3600, "history.date.hour", "history.date.hours"},
    {60, "history.date.minute", "history.date.minutes"},
};

}  // namespace

QString relativeDate(platform::Date date) {
  if (date == platform::distantPast)
    return {};
  const auto second = std::chrono::floor<std::chrono::seconds>(date.time_since_epoch()).count();
  const qint64 seconds = platform::MainQueue::main().now().toSecsSinceEpoch() - second;
  for (const Unit& unit : units) {
    if (seconds < unit.seconds)
      continue;
    const qint64 count = seconds / unit.seconds;
    return localized(QString::fromLatin1(count == 1 ? unit.oneKey : unit.manyKey)).arg(count);
  }
  return localized(QStringLiteral("history.date.now"));
}

}  // namespace sorrel
