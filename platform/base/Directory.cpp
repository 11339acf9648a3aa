#include "platform/base/Directory.h"

#include <QFile>

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace platform {
namespace {

/// What the sort moves about: the names stay where they are, one after the other in one buffer.
struct Found {
  Date date;
  quint32 nameOffset;
  quint32 nameLength;
};

Date modificationDate(int folder, const char* name) {
  struct statx status;
  if (statx(folder, name, AT_SYMLINK_NOFOLLOW, STATX_MTIME, &status) != 0 || !(status.stx_mask & STATX_MTIME))
    return distantPast;
  return Date(std::chrono::seconds(status.stx_mtime.tv_sec) +
              std::chrono::nanoseconds(status.stx_mtime.tv_nsec));
}

}  // namespace

std::optional<std::vector<DirectoryEntry>> newestFirst(const QString& folder, NameFilter isWanted) {
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(QFile::encodeName(folder).constData()), closedir);
  if (!stream)
    return std::nullopt;

  std::string names;
  std::vector<Found> found;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name(entry->d_name);
    if (name.starts_with('.') || !isWanted(name))
      continue;
    found.push_back({modificationDate(dirfd(stream.get()), entry->d_name), static_cast<quint32>(names.size()),
                     static_cast<quint32>(name.size())});
    names += name;
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const Found& left, const Found& right) { return left.date > right.date; });

  std::vector<DirectoryEntry> entries;
  entries.reserve(found.size());
  for (const Found& item : found)
    entries.push_back({QString::fromUtf8(names.data() + item.nameOffset, item.nameLength), item.date});
  return entries;
}

}  // namespace platform
