#pragma once

#include "platform/base/Result.h"

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
/// Where it can't be moved it is still in its place, and the trash has no trace of it. What lies in the trash
/// already, and a folder that holds the trash, can't be moved.
Result<> moveItem(const QByteArray& path);
inline Result<> moveItem(const QString& path) {
  return moveItem(QFile::encodeName(path));
}

}  // namespace Trash
}  // namespace platform
