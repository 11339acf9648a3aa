#include "platform/imaging/codecs/InPlaceFile.h"

#include "platform/system/Descriptor.h"

#include <QFile>
#include <QFileInfo>

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

bool write(int file, std::span<const std::uint8_t> bytes, off_t offset) {
  const int error = writeAll(file, bytes, offset);
  return error == 0 || fail(error);
}

/// For file systems that can't reserve: makes the file longer with zeros, which takes the room for good.
bool lengthenWithZeros(int file, off_t from, off_t to) {
  static constexpr std::array<std::uint8_t, 1 << 16> zeros{};
  for (; from < to; from += static_cast<off_t>(zeros.size())) {
    const auto count = std::min(static_cast<std::size_t>(to - from), zeros.size());
    if (!write(file, std::span(zeros).first(count), from))
      return false;
  }
  return fsync(file) == 0;  // a network's file system may learn only now that there is no room
}

bool reserve(int file, off_t oldLength, off_t newLength) {
  rlimit most{};
  // Beyond this limit a write would end the program, half-way.
  if (getrlimit(RLIMIT_FSIZE, &most) == 0 && static_cast<rlim_t>(newLength) > most.rlim_cur)
    return fail(EFBIG);
  const off_t length = std::max(oldLength, newLength);
  if (length == 0)
    return true;
  int failed = 0;
  do
    failed = fallocate(file, FALLOC_FL_KEEP_SIZE, 0, length);
  while (failed != 0 && errno == EINTR);
  if (failed == 0)
    return true;
  if ((errno == EOPNOTSUPP || errno == ENOSYS) && lengthenWithZeros(file, oldLength, newLength))
    return true;
  const int reason = errno;
  [[maybe_unused]] const int given = ftruncate(file, oldLength);  // gives back what was reserved so far
  return fail(reason);
}

bool overwrite(int file, const QByteArray& data) {
  struct stat status = {};
  if (fstat(file, &status) != 0)
    return false;
  if (!S_ISREG(status.st_mode))
    return fail(EINVAL);
  return reserve(file, status.st_size, data.size()) &&
         write(file, bytesOf({data.constData(), static_cast<std::size_t>(data.size())}), 0) &&
         ftruncate(file, data.size()) == 0 && fsync(file) == 0;
}

bool writeTo(const QString& name, const QByteArray& data) {
  const QByteArray path = QFile::encodeName(name);
  constexpr int flags =
      O_WRONLY | O_CLOEXEC | O_NONBLOCK;  // a pipe without a reader fails instead of waiting
  constexpr mode_t mode = 0666;
  int opened = open(path.constData(), flags);
  const bool isNew = opened < 0 && errno == ENOENT;
  if (isNew)
    opened = open(path.constData(), flags | O_CREAT, mode);
  if (opened < 0)
    return false;
  Descriptor file(opened);
  if (overwrite(file.get(), data) && file.close() == 0)
    return true;
  const int reason = errno;
  if (isNew)
    QFile::remove(QFileInfo(name).canonicalFilePath());
  return fail(reason);
}

}  // namespace

bool write(const QString& path, const QByteArray& data, QString* error) {
  if (writeTo(path, data))
    return true;
  if (error)
    *error = qt_error_string(errno);
  return false;
}

}  // namespace platform::InPlaceFile
