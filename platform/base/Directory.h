#pragma once

#include "platform/base/Date.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace platform {

struct DirectoryEntry {
  QByteArray path;  // in the file system's own bytes
  /// Of the contents; distantPast where the system can't tell. A symbolic link has the link's own.
  Date modificationDate = distantPast;
};

/// When the contents of the file that the path leads to last changed; distantPast where the system can't
/// tell.
[[nodiscard]] Date modificationDate(const QByteArray& path);

/// Says from the bytes of a name alone whether the entry is wanted.
using NameFilter = bool (*)(std::string_view name);

/// Whether the name ends in one of the extensions, which are in lower case and without their point; the
/// name's own case doesn't count.
[[nodiscard]] bool hasExtension(std::string_view name, std::span<const std::string_view> extensions);

/// The visible direct children of a folder whose names `isWanted` accepts, newest first; those of one date in
/// the order in which the folder gives them. Names that begin with a dot are hidden. Absent if the folder
/// can't be read.
///
/// Costs one look at each name and one question to the file system for each accepted one, since this runs on
/// the main thread over folders of any size.
[[nodiscard]] std::optional<std::vector<DirectoryEntry>> newestFirst(const QString& folder,
                                                                     NameFilter isWanted);

}  // namespace platform
