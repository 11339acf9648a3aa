#pragma once

#include "platform/base/Date.h"

#include <QString>

namespace sorrel {

/// How long ago something was, in words of the interface language and in one unit, rounded down: "3 minutes
/// ago". Under a minute, and for what a wrong clock puts into the future, it is just now; a month counts as
/// 30 days and a year as 365. Empty for platform::distantPast.
[[nodiscard]] QString relativeDate(platform::Date date);

}  // namespace sorrel
