#include "platform/base/Trash.h"

#include "platform/base/Locations.h"
#include "platform/base/MainQueue.h"
#include "platform/system/Descriptor.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::Trash {
namespace {

/// What is to be moved. `folder` is free of symbolic links, so that it can be compared and stored.
struct Item {
  QByteArray folder;
  QByteArray name;
  dev_t device = 0;  // of the folder: a mount point itself can't be moved

  [[nodiscard]] QByteArray path() const { return folder == "/" ? folder + name : folder + '/' + name; }
};

/// A trash that can be used: it and the folders within it are there. Paths in its info files are relative to
/// `top`, or absolute where that is empty.
struct Can {
  QByteArray path;
  QByteArray top;
};

enum class Place { Free, Taken, Unusable };

std::optional<struct stat> status(const QByteArray& path) {
  struct stat found = {};
  return lstat(path.constData(), &found) == 0 ? std::optional(found) : std::nullopt;
}

QByteArray parent(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash > 0 ? path.first(slash) : QByteArray("/");
}

bool isWithin(const QByteArray& path, const QByteArray& folder) {
  return path == folder || path.startsWith(folder + '/');
}

/// `path` without symbolic links; empty if there is nothing there.
QByteArray resolved(const QByteArray& path) {
  char buffer[PATH_MAX];
  return realpath(path.constData(), buffer) ? QByteArray(buffer) : QByteArray();
}

std::optional<Item> findItem(QByteArray path) {
  while (path.size() > 1 && path.endsWith('/'))
    path.chop(1);
  Item item;
  item.name = path.mid(path.lastIndexOf('/') + 1);
  if (item.name.isEmpty() || item.name == "." || item.name == "..") {
    errno = EINVAL;
    return std::nullopt;
  }
  item.folder = resolved(path.contains('/') ? parent(path) : QByteArray("."));
  const auto folder = status(item.folder);
  if (item.folder.isEmpty() || !folder || !status(item.path()))
    return std::nullopt;
  item.device = folder->st_dev;
  return item;
}

/// Makes the folder, for its owner alone; true if a real folder of that name is there in the end.
bool makeFolder(const QByteArray& path) {
  if (mkdir(path.constData(), 0700) != 0 && errno != EEXIST)
    return false;
  const auto found = status(path);
  if (found && S_ISDIR(found->st_mode))
    return true;
  errno = ENOTDIR;
  return false;
}

bool makeInnerFolders(const QByteArray& trash) {
  return makeFolder(trash + "/files") && makeFolder(trash + "/info");
}

/// At the top of a device anybody may have put something into the way: only a folder of the user's will do.
bool makeOwnTrash(const QByteArray& path) {
  if (!makeFolder(path))
    return false;
  if (const auto found = status(path); found && found->st_uid == geteuid())
    return makeInnerFolders(path);
  errno = EPERM;
  return false;
}

/// The home folder's trash as it is named, whether or not it is there.
QByteArray homeTrash() {
  return QFile::encodeName(Locations::applicationSupport()) + "/Trash";
}

bool isOnDevice(QByteArray path, dev_t device) {
  struct stat found = {};
  while (stat(path.constData(), &found) != 0 && path.size() > 1)
    path = parent(path);
  return found.st_dev == device;
}

std::optional<Can> openHomeTrash() {
  const QByteArray path = homeTrash();
  for (qsizetype slash = path.indexOf('/', 1); slash > 0; slash = path.indexOf('/', slash + 1))
    mkdir(path.first(slash).constData(), 0700);  // what can't be made shows below
  mkdir(path.constData(), 0700);
  const QByteArray real = resolved(path);  // the user may have put it elsewhere by a link
  if (real.isEmpty() || !makeInnerFolders(real))
    return std::nullopt;
  return Can{real, {}};
}

/// The trash at the top of the item's device: within a ".Trash" that the administrator made for all users, if
/// it is safe to use, else one of the user's own.
std::optional<Can> openDeviceTrash(const Item& item) {
  QByteArray top = item.folder;
  while (top != "/") {
    const auto above = status(parent(top));
    if (!above || above->st_dev != item.device)
      break;
    top = parent(top);
  }
  const QByteArray prefix = top == "/" ? top : top + '/';
  const QByteArray user = QByteArray::number(geteuid());
  const QByteArray shared = prefix + ".Trash/" + user;
  const auto found = status(prefix + ".Trash");
  const bool isSafe = found && S_ISDIR(found->st_mode) && (found->st_mode & S_ISVTX);
  if (isSafe && makeOwnTrash(shared))
    return Can{shared, prefix};
  const QByteArray own = prefix + ".Trash-" + user;
  if (makeOwnTrash(own))
    return Can{own, prefix};
  return std::nullopt;
}

/// The name in the trash to try as the `number`th: "shot.png", "shot 2.png". Shortened, between characters,
/// where the info file's name would be too long for a file system.
QByteArray nameInTrash(const QByteArray& name, int number) {
  const qsizetype dot = name.lastIndexOf('.');
  const bool hasExtension = dot > 0 && name.size() - dot <= 16;  // else the dot is a part of the title
  const QByteArray extension = hasExtension ? name.sliced(dot) : QByteArray();
  const QByteArray tail = (number > 1 ? ' ' + QByteArray::number(number) : QByteArray()) + extension;
  qsizetype length = name.size() - extension.size();
  const qsizetype room = NAME_MAX - qsizetype(sizeof(".trashinfo") - 1) - tail.size();
  if (length > room) {
    length = room;
    while (length > 1 && (uchar(name[length]) & 0xC0) == 0x80)  // in the middle of a UTF-8 character
      --length;
  }
  return name.first(length) + tail;
}

Place writeInfo(const QByteArray& file, const QByteArray& text) {
  Descriptor info(open(file.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!info.isOpen())
    return errno == EEXIST ? Place::Taken : Place::Unusable;
  int error = writeAll(info.get(), bytesOf({text.constData(), size_t(text.size())}));
  if (error == 0)
    error = info.close();
  if (error == 0)
    return Place::Free;
  errno = error;
  return Place::Unusable;
}

Place moveTo(const QByteArray& from, const QByteArray& to) {
  if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
    return Place::Free;
  if (errno == EEXIST)
    return Place::Taken;
  // Some file systems know no such rename. The info file is ours alone, so nobody who keeps to the rules
  // takes the name in between.
  if (errno != EINVAL && errno != ENOSYS)
    return Place::Unusable;
  if (status(to))
    return Place::Taken;
  return rename(from.constData(), to.constData()) == 0 ? Place::Free : Place::Unusable;
}

bool moveInto(const Can& can, const Item& item) {
  const QByteArray path = item.path();
  const QByteArray stored = can.top.isEmpty() ? path : path.sliced(can.top.size());
  const QByteArray date = MainQueue::main().now().toLocalTime().toString(Qt::ISODate).toLatin1();
  const QByteArray text =
      "[Trash Info]\nPath=" + stored.toPercentEncoding("/") + "\nDeletionDate=" + date + '\n';
  for (int number = 1;; ++number) {
    const QByteArray name = nameInTrash(item.name, number);
    const QByteArray info = can.path + "/info/" + name + ".trashinfo";
    Place place = writeInfo(info, text);
    if (place == Place::Taken)
      continue;
    if (place == Place::Free) {
      place = moveTo(path, can.path + "/files/" + name);
      if (place == Place::Free)
        return true;
    }
    const int reason = errno;
    unlink(info.constData());
    errno = reason;
    if (place == Place::Unusable)
      return false;
  }
}

bool move(const QByteArray& path) {
  const auto item = findItem(path);
  if (!item)
    return false;
  const bool isAtHome = isOnDevice(homeTrash(), item->device);
  const auto can = isAtHome ? openHomeTrash() : openDeviceTrash(*item);
  if (!can)
    return false;
  if (isWithin(item->path(), can->path) || isWithin(can->path, item->path())) {
    errno = EINVAL;
    return false;
  }
  return moveInto(*can, *item);
}

}  // namespace

Result<> moveItem(const QByteArray& path) {
  return move(path) ? Result<>() : Error::fromErrno(errno);
}

}  // namespace platform::Trash
