#pragma once

#include "platform/base/Result.h"

#include <QByteArray>

#include <optional>

namespace platform {

/// Tells a file from another one that has taken its name.
struct FileIdentity {
  quint64 device = 0;
  quint64 inode = 0;
  /// When it was made, in nanoseconds since 1970; 0 where the file system doesn't keep it. Inode numbers are
  /// used again at once, and some devices get another number at each start of the system, hence this.
  qint64 birth = 0;

  [[nodiscard]] bool isSameFile(const FileIdentity& other) const {
    return inode == other.inode && birth == other.birth && (birth != 0 || device == other.device);
  }
};

/// Overwrites files where they lie: the same inode, so hard links, permissions and other programs that hold
/// a file open stay with it, and no temporary file beside it. Paths are absolute and in the file system's own
/// bytes; symbolic links are followed.
///
/// Overwriting takes time, in which the program may be killed or the power fail. So a copy of the new bytes
/// goes to the disk first, into the program's state folder, and stays until they are in the file itself;
/// finishInterrupted(), at the next start, completes what was cut short.
namespace InPlaceFile {

/// Of the file that the path leads to; absent if there is none.
[[nodiscard]] std::optional<FileIdentity> identity(const QByteArray& path);

/// Puts `data` in the place of the contents of the file at `path` and brings it to the disk. `opened` is the
/// identity that the file had when it was read. Returns where the data is now:
/// - at `path`, if that is still the file that was opened, or if there is none any more: it is made again;
/// - beside it, under the first free of the names "shot (2).png", "shot (3).png", …, if something else has
///   taken the name: that is left alone.
///
/// Only what grows needs room, which is reserved before the first byte changes. So a disk that is full, a
/// quota, a limit of the length, a file that may not be written, and whatever isn't a plain file give an
/// error and leave everything as it was. A file with holes, or on a file system that copies on write, may run
/// out of room all the same; then, and where the disk fails, it is damaged, and the copy stays for the next
/// start. Where the state folder can't take a copy the data is written without one, with a log line.
Result<QByteArray> write(const QByteArray& path, const QByteArray& data, const FileIdentity& opened);

/// Finishes the writes that ended half-way in an earlier run, and logs each; to be called at the start. Where
/// the path leads to another file by now, or to none, the data is kept as a file in the state folder, which
/// the log line names. What another instance of the program is just writing is left to it.
void finishInterrupted();

}  // namespace InPlaceFile
}  // namespace platform
