#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// Overwrites a file where it lies: the same inode, so hard links, permissions and other programs that hold
/// it open stay with it, and no temporary file beside it. A symbolic link is followed; a file that isn't
/// there is made.
namespace InPlaceFile {

/// Puts `data` in the place of the file's contents and brings it to the disk. Room for it is reserved before
/// the first byte changes, so that a full disk or a quota leaves the file as it was; so do a file or folder
/// that may not be written, and whatever isn't a plain file. Only a disk that fails while the bytes go out
/// can leave a part of them. False where it failed; `error` then says why.
[[nodiscard]] bool write(const QString& path, const QByteArray& data, QString* error = nullptr);

}  // namespace InPlaceFile
}  // namespace platform
