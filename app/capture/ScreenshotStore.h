#pragma once

#include "platform/base/Date.h"
#include "platform/base/FilePath.h"

#include <vector>

namespace sorrel {

/// One picture in the storage folder.
struct Screenshot {
  /// Absolute, in the file system's own bytes; also what tells one screenshot from another in a list.
  QByteArray path;
  /// When the file's contents last changed.
  platform::Date date = platform::distantPast;

  [[nodiscard]] const QByteArray& id() const { return path; }
  [[nodiscard]] QUrl url() const { return platform::FilePath::url(path); }
  bool operator==(const Screenshot&) const = default;
};

/// The storage folder as the list of its pictures. The folder is the truth: it is read anew at each question.
namespace ScreenshotStore {

/// The folder's visible children that are named like pictures, newest first; empty if it can't be read.
[[nodiscard]] std::vector<Screenshot> all();

/// Moves the screenshot's file to the Trash. If that can't be done the file stays, and so stays in the list.
void moveToTrash(const Screenshot& screenshot);

}  // namespace ScreenshotStore
}  // namespace sorrel
