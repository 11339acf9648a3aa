#pragma once

#include <QUrl>

namespace sorrel {

/// The two folders that the program writes to. Each question works the answer out anew and creates the folder
/// if it isn't there; that it can't be created shows only when it is used. The addresses end in a slash.
namespace AppPaths {

/// The folder that receives screenshots: the one under the setting "storageDirectory", else "Sorrel bottle"
/// among the user's documents.
[[nodiscard]] QUrl bottleDirectory();
/// The application's own folder for what it keeps.
[[nodiscard]] QUrl supportDirectory();

}  // namespace AppPaths
}  // namespace sorrel
