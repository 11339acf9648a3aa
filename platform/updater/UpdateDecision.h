#pragma once

#include "platform/updater/Feed.h"

#include <QDateTime>

#include <optional>

namespace platform {

/// The newest release that is newer than `current`; a pre-release only for whoever runs one.
[[nodiscard]] std::optional<Feed::Release> newsIn(const Feed& feed, const Version& current);

/// Whether an automatic check may be made again: a day after the one before. One that lies in the future was
/// made by a clock that was wrong, and doesn't count.
[[nodiscard]] bool isCheckDue(const QDateTime& lastCheck, const QDateTime& now);

}  // namespace platform
