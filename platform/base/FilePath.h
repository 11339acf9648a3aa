#pragma once

#include <QByteArray>
#include <QFile>
#include <QUrl>

#include <functional>
#include <memory>

namespace platform {

/// Paths are kept in the file system's own bytes: a name need not be text, and one that isn't can't be found
/// again by the text that is shown for it.
namespace FilePath {

/// The address of an absolute path; what isn't text in it is percent-encoded byte by byte.
[[nodiscard]] QUrl url(const QByteArray& path);
/// The path behind a file's address, to the byte; empty if it is no local file's.
[[nodiscard]] QByteArray of(const QUrl& url);

/// For the eye alone: what isn't UTF-8 shows as replacement characters.
[[nodiscard]] QString text(const QByteArray& path);

/// The last component, and the same without its extension.
[[nodiscard]] QByteArray name(const QByteArray& path);
[[nodiscard]] QByteArray baseName(const QByteArray& path);

/// Whether anything has this name, be it a link that leads nowhere.
[[nodiscard]] bool exists(const QByteArray& path);

/// What to try where the path is taken: "shot.png" becomes "shot (2).png" for the number 2.
[[nodiscard]] QByteArray numbered(const QByteArray& path, int number);
/// The path itself or else the first of its numbered ones, from 2 up, that isn't taken.
[[nodiscard]] QByteArray firstFree(const QByteArray& path,
                                   const std::function<bool(const QByteArray&)>& isTaken = exists);

/// The file at the path, open for reading; null if there is none, or it is no plain file.
[[nodiscard]] std::unique_ptr<QFile> openToRead(const QByteArray& path);

}  // namespace FilePath
}  // namespace platform
