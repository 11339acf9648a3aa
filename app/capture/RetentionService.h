#pragma once

#include <QtGlobal>

namespace sorrel {

/// Sends old screenshots to the Trash. One sweep when asked; when to ask is the coordinator's business.
namespace RetentionService {

/// The age limit in days, from the setting "autoDeleteDays"; 30 where there is none. Below 1 means never.
[[nodiscard]] qint64 retentionDays();

/// Trashes what is older than the limit, to the second, and returns how many screenshots that were. One that
/// can't be trashed is counted too, and met again by the next sweep. Nothing is trashed in a run that
/// couldn't read its settings.
int sweep();

}  // namespace RetentionService
}  // namespace sorrel
