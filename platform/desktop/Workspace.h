#pragma once

#include <QString>
#include <QUrl>

namespace platform {

/// The desktop around the program.
namespace Workspace {

/// Opens a file, folder or address with the program that the desktop has for it.
void open(const QUrl& url);

/// Gives a folder the program's image of that name as its icon, in the ways that the desktops' file managers
/// know: an entry in the folder's ".directory" file, whose other lines stay, and the metadata that gio keeps,
/// where it is installed. False if the program has no such image or the entry can't be written.
bool setIcon(const QString& imageName, const QString& folder);

}  // namespace Workspace
}  // namespace platform
