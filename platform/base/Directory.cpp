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

Date modificationDate(int folder, const char* name, int flags) {
  struct statx status;
  if (statx(folder, name, flags, STATX_MTIME, &status) != 0 || !(status.stx_mask & STATX_MTIME))
    return distantPast;
  return dateOf(status.stx_mtime.tv_sec, status.stx_mtime.tv_nsec);
}

}  // namespace

Date modificationDate(const QByteArray& path) {
  return modificationDate(AT_FDCWD, path.constData(), 0);
}

bool hasExtension(std::string_view name, std::span<const std::string_view> extensions) {
  const size_t dot = name.rfind('.');
  if (dot == std::string_view::npos)
    return false;
  const std::string_view extension = name.substr(dot + 1);
  const auto equalsIgnoringCase = [extension](std::string_view accepted) {
    return std::equal(
        extension.begin(), extension.end(), accepted.begin(), accepted.end(),
        [](char left, char right) { return (left >= 'A' && left <= 'Z' ? left + 32 : left) == right; });
  };
  return std::any_of(extensions.begin(), extensions.end(), equalsIgnoringCase);
}

std::optional<std::vector<DirectoryEntry>> newestFirst(const QString& folder, NameFilter isWanted) {
  std::string prefix = QFile::encodeName(folder).toStdString();
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(prefix.c_str()), closedir);
  if (!stream)
    return std::nullopt;

  if (!prefix.ends_with('/'))
    prefix += '/';

  std::string names;
  std::vector<Found> found;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name(entry->d_name);
    if (name.starts_with('.') || !isWanted(name))
      continue;
    found.push_back({modificationDate(dirfd(stream.get()), entry->d_name, AT_SYMLINK_NOFOLLOW),
                     static_cast<quint32>(names.size()), static_cast<quint32>(name.size())});
    names += name;
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const Found& left, const Found& right) { return left.date > right.date; });

  std::vector<DirectoryEntry> entries;
  entries.reserve(found.size());
  for (const Found& item : found) {
    QByteArray path;
    path.reserve(static_cast<qsizetype>(prefix.size()) + static_cast<qsizetype>(item.nameLength));
    path.append(prefix.data(), static_cast<qsizetype>(prefix.size()));
    path.append(names.data() + item.nameOffset, static_cast<qsizetype>(item.nameLength));
    entries.push_back({std::move(path), item.date});
  }
  return entries;
}

}  // namespace platform
