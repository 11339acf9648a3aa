#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace platform {

/// The user's trash, by the freedesktop.org trash rules: what lies on the device of the home folder's trash
/// goes there, anything else into a trash at the top of its own device. File managers show it and put it
/// back.
namespace Trash {

/// Moves the file, folder or symbolic link (never its target) at `path` to the trash, under a name that is
/// free there; nothing is copied. `path` is in the file system's own bytes, as a name need not be text.
///
/// False where it can't be moved: it is then still in its place, the trash has no trace of it, and `error`
/// says why. What lies in the trash already, and a folder that holds the trash, can't be moved.
[[nodiscard]] bool moveItem(const QByteArray& path, QString* error = nullptr);
[[nodiscard]] inline bool moveItem(const QString& path, QString* error = nullptr) {
  return moveItem(QFile::encodeName(path), error);
}

}  // namespace Trash
}  // namespace platform
