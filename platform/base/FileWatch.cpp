#include "platform/base/FileWatch.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace platform {

FileWatch::FileWatch(const QString& file, std::function<void()> whenChanged)
    : path(file), onChange(std::move(whenChanged)), inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (!inotify.isOpen())
    return;  // the user has too many: changes aren't heard then
  arm();
  notifier = std::make_unique<QSocketNotifier>(inotify.get(), QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readEvents(); });
}

FileWatch::~FileWatch() = default;

void FileWatch::arm() {
  watchFolderOf(path);
  if (const QString real = QFileInfo(path).canonicalFilePath(); !real.isEmpty())
    watchFolderOf(real);
}

void FileWatch::watchFolderOf(const QString& file) {
  // Not IN_MODIFY: who writes in place and closes is heard at the end.
  constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
  const QFileInfo info(file);
  const int watch = inotify_add_watch(inotify.get(), QFile::encodeName(info.path()).constData(), events);
  if (watch >= 0)
    names.insert(watch, QFile::encodeName(info.fileName()));
}

void FileWatch::readEvents() {
  alignas(inotify_event) char buffer[4096];
  bool isHeard = false;
  ssize_t length = 0;
  while ((length = read(inotify.get(), buffer, sizeof buffer)) > 0) {
    for (const char* at = buffer; at < buffer + length;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      const char* const name = event.len > 0 ? at + sizeof event : "";
      // Where events were lost, anything may have happened.
      isHeard = isHeard || (event.mask & IN_Q_OVERFLOW) || names.value(event.wd) == name;
      if (event.mask & IN_IGNORED)
        names.remove(event.wd);
      at += sizeof event + event.len;
    }
  }
  if (!isHeard)
    return;
  arm();  // a link may lead elsewhere now
  onChange();
}

}  // namespace platform
