#include "platform/base/InPlaceFile.h"

#include "platform/base/FilePath.h"
#include "platform/base/Log.h"
#include "platform/base/SavingCopy.h"
#include "platform/system/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::InPlaceFile {
namespace {

/// These report as the system's calls do: false, and the reason in errno.

bool fail(int reason) {
  errno = reason;
  return false;
}

bool writeAt(int file, const char* bytes, off_t size, off_t offset) {
  const int reason = writeAll(file, bytesOf(std::string_view(bytes, static_cast<std::size_t>(size))), offset);
  return reason == 0 || fail(reason);
}

bool writeWhole(int file, const QByteArray& data) {
  return writeAt(file, data.constData(), data.size(), 0) && ftruncate(file, data.size()) == 0 &&
         fsync(file) == 0;
}

/// For file systems that can't reserve: makes the file longer with zeros, which takes the room for good.
bool lengthenWithZeros(int file, off_t from, off_t to) {
  static constexpr std::array<char, 1 << 16> zeros{};
  for (off_t at = from; at < to; at += static_cast<off_t>(zeros.size())) {
    if (!writeAt(file, zeros.data(), std::min(to - at, static_cast<off_t>(zeros.size())), at)) {
      const int reason = errno;
      [[maybe_unused]] const int given = ftruncate(file, from);
      return fail(reason);
    }
  }
  return from >= to || fsync(file) == 0;  // a network's file system may learn only now that there is no room
}

enum class Room { reserved, unknown, none };

/// Takes the room between the two lengths without changing what anybody reads. Only that: some file systems
/// ask for room for all of a range, whatever lies there already.
Room reserve(int file, off_t oldLength, off_t newLength) {
  rlimit most{};
  // Beyond this limit a write would end the program, half-way.
  if (getrlimit(RLIMIT_FSIZE, &most) == 0 && static_cast<rlim_t>(newLength) > most.rlim_cur) {
    errno = EFBIG;
    return Room::none;
  }
  if (newLength <= oldLength)
    return Room::reserved;
  int failed = 0;
  do
    failed = fallocate(file, FALLOC_FL_KEEP_SIZE, oldLength, newLength - oldLength);
  while (failed != 0 && errno == EINTR);
  if (failed == 0)
    return Room::reserved;
  if (errno == EOPNOTSUPP || errno == ENOSYS)
    return Room::unknown;
  const int reason = errno;
  [[maybe_unused]] const int given = ftruncate(file, oldLength);  // gives back what was reserved so far
  errno = reason;
  return Room::none;
}

std::optional<FileIdentity> identityOf(int folder, const char* path, int flags) {
  struct statx status {};
  if (statx(folder, path, flags, STATX_INO | STATX_BTIME, &status) != 0)
    return std::nullopt;
  FileIdentity identity{(quint64(status.stx_dev_major) << 32) | status.stx_dev_minor, status.stx_ino, 0};
  if (status.stx_mask & STATX_BTIME)
    identity.birth = qint64(status.stx_btime.tv_sec) * 1'000'000'000 + status.stx_btime.tv_nsec;
  return identity;
}

/// A file open for writing, and what tells it from others.
struct Opened {
  QByteArray path;
  Descriptor file;
  FileIdentity identity;
  off_t length = 0;
  bool isNew = false;
};

Result<Opened> describe(QByteArray path, Descriptor file, bool isNew) {
  struct stat status = {};
  const auto identity = identityOf(file.get(), "", AT_EMPTY_PATH);
  if (!identity || fstat(file.get(), &status) != 0)
    return Error::fromErrno(errno);
  if (!S_ISREG(status.st_mode))
    return Error::fromErrno(EINVAL);
  return Opened{std::move(path), std::move(file), *identity, status.st_size, isNew};
}

constexpr int flags = O_WRONLY | O_CLOEXEC | O_NONBLOCK;  // a pipe without a reader fails instead of waiting

/// The file that was opened, else a new one, at its path or beside it.
Result<Opened> openForWriting(const QByteArray& path, const FileIdentity& expected) {
  const auto there = identity(path);
  if (there && there->isSameFile(expected)) {
    Descriptor file(open(path.constData(), flags));
    if (!file.isOpen())
      return Error::fromErrno(errno);
    auto opened = describe(path, std::move(file), false);
    if (!opened || opened->identity.isSameFile(expected))
      return opened;
  }
  QByteArray candidate = path;
  for (int number = 2;; ++number) {
    constexpr mode_t mode = 0666;
    Descriptor file(open(candidate.constData(), flags | O_CREAT | O_EXCL, mode));
    if (file.isOpen())
      return describe(candidate, std::move(file), true);
    if (errno != EEXIST)
      return Error::fromErrno(errno);
    candidate = FilePath::numbered(path, number);
  }
}

Result<> overwrite(const Opened& to, const QByteArray& data) {
  const Room room = reserve(to.file.get(), to.length, data.size());
  if (room == Room::none)
    return Error::fromErrno(errno);
  auto copy = SavingCopy::make({to.path, to.identity}, data);
  while (room == Room::unknown && !lengthenWithZeros(to.file.get(), to.length, data.size())) {
    const auto failure = Error::fromErrno(errno);
    if (!copy)
      return failure;
    copy->remove();  // it may have taken the very room
    copy = failure;
  }
  if (!copy)
    log(QStringLiteral("Sorrel saving: %1 is written without a copy, as none can be kept: %2")
            .arg(FilePath::text(to.path), copy.error().reason));
  if (!writeWhole(to.file.get(), data))
    return Error::fromErrno(errno);
  if (copy)
    copy->remove();
  SavingCopy::removeAllOf(to.path);
  return {};
}

void keep(SavingCopy& copy) {
  const auto kept = copy.keep();
  log(QStringLiteral("Sorrel saving: %1 is no longer the file that was being saved; what was to be in it %2")
          .arg(FilePath::text(copy.target().path),
               kept ? QStringLiteral("is kept as ") + *kept
                    : QStringLiteral("stays in the state folder: ") + kept.error().reason));
}

void finish(SavingCopy& copy) {
  const QByteArray& path = copy.target().path;
  const auto there = identity(path);
  if (!there || !there->isSameFile(copy.target().identity)) {
    keep(copy);
    return;
  }
  const Descriptor file(open(path.constData(), flags));
  if (!file.isOpen() || reserve(file.get(), 0, copy.data().size()) == Room::none ||
      !writeWhole(file.get(), copy.data())) {
    log(QStringLiteral("Sorrel saving: %1 was cut short and can't be finished now: %2")
            .arg(FilePath::text(path), Error::fromErrno(errno).reason));
    return;  // the next start tries again
  }
  copy.remove();
  log(QStringLiteral("Sorrel saving: finished %1, which was cut short").arg(FilePath::text(path)));
}

}  // namespace

std::optional<FileIdentity> identity(const QByteArray& path) {
  return identityOf(AT_FDCWD, path.constData(), 0);
}

Result<QByteArray> write(const QByteArray& path, const QByteArray& data, const FileIdentity& opened) {
  const auto to = openForWriting(path, opened);
  if (!to)
    return to.error();
  const auto written = overwrite(*to, data);
  if (written)
    return to->path;
  if (to->isNew) {
    unlink(to->path.constData());
    SavingCopy::removeAllOf(to->path);
  }
  return written.error();
}

void finishInterrupted() {
  for (SavingCopy& copy : SavingCopy::left())
    finish(copy);
}

}  // namespace platform::InPlaceFile
