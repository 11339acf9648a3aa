#include "platform/base/SavingCopy.h"

#include "platform/base/FilePath.h"
#include "platform/base/Locations.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QSaveFile>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <future>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr quint32 signature = 0x53415631;  // of the first form of these files

QString folder() {
  return Locations::state() + QStringLiteral("/saving");
}

/// Of one target all copies begin alike.
QString nameBeginning(const QByteArray& path) {
  return QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex()) + u'-';
}

bool makeFolder(const QString& path) {
  constexpr auto forItsOwnerAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
  return QDir(path).exists() || (QDir().mkpath(path) && QFile::setPermissions(path, forItsOwnerAlone));
}

/// Open and locked; not open if another process has it locked, or it is gone by then.
Descriptor lockedFile(const QByteArray& path, int flags) {
  constexpr mode_t forItsOwnerAlone = 0600;
  Descriptor file(open(path.constData(), flags | O_CLOEXEC, forItsOwnerAlone));
  const bool isLocked =
      file.isOpen() && flock(file.get(), LOCK_EX | LOCK_NB) == 0 && access(path.constData(), F_OK) == 0;
  return isLocked ? std::move(file) : Descriptor();
}

/// Beyond this limit a write would end the program.
bool isWithinLimit(qint64 length) {
  rlimit most{};
  return getrlimit(RLIMIT_FSIZE, &most) != 0 || static_cast<rlim_t>(length) <= most.rlim_cur;
}

bool writeAt(int file, const QByteArray& bytes, off_t offset) {
  errno = writeAll(file, bytesOf({bytes.constData(), static_cast<std::size_t>(bytes.size())}), offset);
  return errno == 0;
}

/// Tells whether all of the bytes came to the disk: Fowler, Noll and Vo's hash (FNV-1a), in steps of eight
/// bytes.
quint64 checksum(const QByteArray& bytes) {
  quint64 hash = 0xCBF29CE484222325;
  for (qsizetype at = 0; at < bytes.size(); at += qsizetype(sizeof hash)) {
    quint64 word = 0;
    std::memcpy(&word, bytes.constData() + at,
                std::min(sizeof word, static_cast<std::size_t>(bytes.size() - at)));
    hash = (hash ^ word) * 0x100000001B3;
  }
  return hash;
}

/// As long whatever the sum.
QByteArray header(const SavingCopy::Target& target, qint64 length, quint64 sum) {
  QByteArray bytes;
  QDataStream(&bytes, QIODevice::WriteOnly)
      << signature << target.path << target.identity.device << target.identity.inode << target.identity.birth
      << length << sum;
  return bytes;
}

/// The header comes last, once the sum is known: until then there are zeros in its place, and the file counts
/// as incomplete.
bool writeCopy(int file, const SavingCopy::Target& target, const QByteArray& data) {
  std::future<quint64> sum = std::async(checksum, std::cref(data));
  const bool isWritten = writeAt(file, data, header(target, data.size(), 0).size());
  const int reason = errno;
  const QByteArray head = header(target, data.size(), sum.get());
  errno = reason;
  return isWritten && writeAt(file, head, 0) && fsync(file) == 0;
}

void removeIfNobodyHasIt(const QByteArray& path) {
  if (lockedFile(path, O_RDONLY).isOpen())
    unlink(path.constData());
}

}  // namespace

Result<SavingCopy> SavingCopy::make(const Target& target, const QByteArray& data) {
  if (!isWithinLimit(header(target, data.size(), 0).size() + data.size()))
    return Error::fromErrno(EFBIG);
  if (!makeFolder(folder()))
    return Error{folder() + QStringLiteral(" can't be made")};
  const QString name = nameBeginning(target.path) + QUuid::createUuid().toString(QUuid::Id128);
  const QByteArray path = QFile::encodeName(folder() + u'/' + name);
  Descriptor file = lockedFile(path, O_WRONLY | O_CREAT | O_EXCL);
  // Linux's file systems bring a new file's name to the disk with the file: the folder needs no sync of its
  // own, which would cost as much again.
  if (file.isOpen() && writeCopy(file.get(), target, data))
    return SavingCopy(path, std::move(file), target, data);
  const auto failure = Error::fromErrno(errno);
  unlink(path.constData());
  return failure;
}

std::optional<SavingCopy> SavingCopy::read(const QByteArray& path) {
  Descriptor locked = lockedFile(path, O_RDONLY);
  QFile file;
  if (!locked.isOpen() || !file.open(locked.get(), QIODevice::ReadOnly))
    return std::nullopt;
  quint32 form = 0;
  Target target;
  qint64 length = -1;
  quint64 sum = 0;
  QDataStream stream(&file);
  stream >> form >> target.path >> target.identity.device >> target.identity.inode >> target.identity.birth >>
      length >> sum;
  if (form != signature || stream.status() != QDataStream::Ok)
    return std::nullopt;
  QByteArray data = file.readAll();
  if (data.size() != length || checksum(data) != sum)
    return std::nullopt;
  return SavingCopy(path, std::move(locked), std::move(target), std::move(data));
}

std::vector<SavingCopy> SavingCopy::left() {
  std::vector<SavingCopy> copies;
  const QDir saving(folder());
  for (const QString& name : saving.entryList(QDir::Files, QDir::Time | QDir::Reversed)) {
    const QByteArray path = QFile::encodeName(saving.filePath(name));
    if (auto copy = read(path))
      copies.push_back(std::move(*copy));
    else
      removeIfNobodyHasIt(path);  // incomplete: nothing was written over its file yet
  }
  return copies;
}

void SavingCopy::remove() {
  unlink(ownPath.constData());
  [[maybe_unused]] const int closed = locked.close();
}

void SavingCopy::removeAllOf(const QByteArray& path) {
  const QDir saving(folder());
  for (const QString& name : saving.entryList({nameBeginning(path) + u'*'}, QDir::Files))
    removeIfNobodyHasIt(QFile::encodeName(saving.filePath(name)));
}

Result<QString> SavingCopy::keep() {
  const QString kept = Locations::state() + QStringLiteral("/kept");
  if (!makeFolder(kept))
    return Error{kept + QStringLiteral(" can't be made")};
  const QString name = FilePath::text(FilePath::name(about.path));
  const QString path = FilePath::text(FilePath::firstFree((kept + u'/' + name).toUtf8()));
  QSaveFile out(path);
  if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
    return Error{out.errorString()};
  remove();
  return path;
}

}  // namespace platform
