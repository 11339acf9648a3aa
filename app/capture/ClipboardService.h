#pragma once

#include <QString>
#include <QUrl>

namespace sorrel {

/// Copies stored screenshots, and knows about Quillon, a clipboard manager that goes well with them. Main
/// thread only.
namespace ClipboardService {

/// Replaces the pasteboard's contents by the picture in this file, if it can be read as one, and the file's
/// address. The picture is pasted as it is now, whatever becomes of the file. False where the pasteboard
/// couldn't be written, and is as it was.
[[nodiscard]] bool copy(const QUrl& url);

[[nodiscard]] bool isQuillonRunning();
[[nodiscard]] bool isQuillonInstalled();
/// What to tell the user after a copy: it says so where Quillon runs at this moment.
[[nodiscard]] QString copyConfirmation();
[[nodiscard]] const QUrl& quillonPageURL();

}  // namespace ClipboardService
}  // namespace sorrel
