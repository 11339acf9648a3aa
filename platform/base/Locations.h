#pragma once

#include <QString>

namespace platform {

/// Where this system keeps things for the user, by the XDG base directory and user directory rules, worked
/// out anew at each call. Absolute paths without a trailing slash; nothing is created.
namespace Locations {

[[nodiscard]] QString home();
/// The user's documents folder as the desktop names it.
[[nodiscard]] QString documents();
/// The folder that holds each program's support folder.
[[nodiscard]] QString applicationSupport();
/// Sorrel's own configuration folder.
[[nodiscard]] QString configuration();
/// Sorrel's own folder for what outlasts a run and is of no interest to the user.
[[nodiscard]] QString state();
/// Sorrel's own folder for what can be got again.
[[nodiscard]] QString cache();
/// Sorrel's own folder for sockets and locks, gone with the user's session.
[[nodiscard]] QString runtime();

/// `path` with a leading "~" or "~user" replaced by that user's home folder; unchanged if there is no such
/// user.
[[nodiscard]] QString expandingTilde(const QString& path);

/// The tool that was installed with this program, whether or not it is there.
[[nodiscard]] QString ownTool(const QString& name);
/// The same for a file to be read.
[[nodiscard]] QString ownFile(const QString& name);
/// The reverse for the present user, for the eye: a path in the home folder begins with "~", and none ends
/// in a slash.
[[nodiscard]] QString abbreviatingWithTilde(const QString& path);

/// The program that stands for the system tool `path`: `path` itself if this system has it, else the tool of
/// the same name that was installed with this program.
[[nodiscard]] QString systemTool(const QString& path);

}  // namespace Locations
}  // namespace platform
