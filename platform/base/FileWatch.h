#pragma once

#include "platform/system/Descriptor.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace platform {

/// Tells when a file was written, came or went, or another took its name, whoever did it. Where the file is a
/// symbolic link, what it leads to is watched too.
///
/// The system wakes the program when something happens in the file's folder, and not otherwise. What happens
/// to a folder that isn't there isn't heard; arm() looks for it again. Main thread only.
class FileWatch {
 public:
  /// `onChange` is called from the event loop, once for all that has happened until then.
  FileWatch(const QString& path, std::function<void()> onChange);
  ~FileWatch();
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;

  /// Watches the folders as they are now; costs nothing where they are watched already.
  void arm();

 private:
  void watchFolderOf(const QString& path);
  void readEvents();

  const QString path;
  const std::function<void()> onChange;
  Descriptor inotify;
  QHash<int, QByteArray> names;  // the file's name in each watched folder
  std::unique_ptr<QSocketNotifier> notifier;
};

}  // namespace platform
