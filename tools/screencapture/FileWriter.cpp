#include "tools/screencapture/FileWriter.h"

#include "platform/system/Descriptor.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace screencapture {

namespace {

using platform::Descriptor;
using platform::writeAll;

constexpr mode_t anyoneUnlessMasked = 0666;
constexpr mode_t permissionBits = 07777;
constexpr int nameAttempts = 100;

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// A name beside the target that a listing doesn't show and that no other run of the program uses.
std::string hiddenName(const std::string& folder, int attempt) {
  return folder + "/.screencapture-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
}

/// Puts the complete file behind `descriptor`, which has no name yet, under `path`.
int giveName(int descriptor, const std::string& folder, const std::string& path) {
  const std::string file = "/proc/self/fd/" + std::to_string(descriptor);
  const auto link = [&](const std::string& name) {
    return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
  };
  int error = link(path);
  // A link replaces nothing, a rename does.
  for (int attempt = 0; error == EEXIST && attempt < nameAttempts; ++attempt) {
    const std::string hidden = hiddenName(folder, attempt);
    error = link(hidden);
    if (error != 0)
      continue;
    if (rename(hidden.c_str(), path.c_str()) == 0)
      return 0;
    error = errno;
    unlink(hidden.c_str());
    return error;
  }
  return error;
}

int fill(int descriptor, std::optional<mode_t> permissions, std::span<const std::uint8_t> contents) {
  if (permissions && fchmod(descriptor, *permissions) != 0)
    return errno;
  return writeAll(descriptor, contents);
}

int writeNameless(const std::string& folder, const std::string& path, std::optional<mode_t> permissions,
                  std::span<const std::uint8_t> contents) {
  const Descriptor file(open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, anyoneUnlessMasked));
  if (!file.isOpen())
    return errno;
  const int error = fill(file.get(), permissions, contents);
  return error != 0 ? error : giveName(file.get(), folder, path);
}

/// For file systems that know no files without a name.
int writeHidden(const std::string& folder, const std::string& path, std::optional<mode_t> permissions,
                std::span<const std::uint8_t> contents) {
  for (int attempt = 0; attempt < nameAttempts; ++attempt) {
    const std::string hidden = hiddenName(folder, attempt);
    Descriptor file(open(hidden.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, anyoneUnlessMasked));
    if (!file.isOpen() && errno == EEXIST)
      continue;
    if (!file.isOpen())
      return errno;
    int error = fill(file.get(), permissions, contents);
    if (error == 0)
      error = file.close();
    if (error == 0 && rename(hidden.c_str(), path.c_str()) != 0)
      error = errno;
    if (error != 0)
      unlink(hidden.c_str());
    return error;
  }
  return EEXIST;
}

}  // namespace

int writeFile(const std::string& path, std::span<const std::uint8_t> contents, Unfinished unfinished) {
  std::string target = path;
  std::optional<mode_t> permissions;
  struct stat existing {};
  if (stat(path.c_str(), &existing) == 0) {
    if (!S_ISREG(existing.st_mode))
      return S_ISDIR(existing.st_mode) ? EISDIR : EINVAL;
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
      return errno;
    permissions = existing.st_mode & permissionBits;
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
    if (!resolved)
      return errno;
    target = resolved.get();
  }
  const std::string folder = folderOf(target);
  int error = EOPNOTSUPP;
  if (unfinished == Unfinished::Nameless)
    error = writeNameless(folder, target, permissions, contents);
  // An old kernel takes the flag for a try to write a folder, hence EISDIR; without /proc the file can't be
  // named, hence ENOENT.
  if (error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOENT)
    error = writeHidden(folder, target, permissions, contents);
  return error;
}

}  // namespace screencapture
