#pragma once

#include <QString>
#include <QUrl>

namespace platform {

/// The desktop around the program.
namespace Workspace {

/// Opens a file, folder or address with the program that the desktop has for it.
void open(const QUrl& url);

/// Whether a program of this name is on the session bus now: names are told apart by case, and not every
/// program has one.
[[nodiscard]] bool isRunning(const QString& busName);

/// Whether the desktop knows a program by this identifier, that is its desktop file's name without ".desktop"
/// (org.example.Program). By the rules of desktop entries a dash may stand for a folder, a user's own entry
/// goes before the system's, and one that is marked as hidden stands for a program that was removed.
[[nodiscard]] bool isInstalled(const QString& identifier);

/// Gives a folder the program's image of that name as its icon, in the ways that the desktops' file managers
/// know: an entry in the folder's ".directory" file, whose other lines stay, and the metadata that gio keeps,
/// where it is installed. False if the program has no such image or the entry can't be written.
bool setIcon(const QString& imageName, const QString& folder);

}  // namespace Workspace
}  // namespace platform
