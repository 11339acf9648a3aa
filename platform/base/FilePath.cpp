#include "platform/base/FilePath.h"

#include "platform/system/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace platform::FilePath {
namespace {

/// Where the extension begins, with its point; the path's end if there is none. A name that only begins with
/// a point has none.
qsizetype extensionOf(const QByteArray& path) {
  const qsizetype dot = path.lastIndexOf('.');
  return dot > path.lastIndexOf('/') + 1 ? dot : path.size();
}

}  // namespace

QUrl url(const QByteArray& path) {
  if (QUtf8StringView(path).isValidUtf8())
    return QUrl::fromLocalFile(QString::fromUtf8(path));
  return QUrl::fromEncoded("file://" + path.toPercentEncoding("/"));
}

QByteArray of(const QUrl& url) {
  if (!url.isLocalFile())
    return {};
  if (!url.host().isEmpty())
    return QFile::encodeName(url.toLocalFile());
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
}

QString text(const QByteArray& path) {
  return QString::fromUtf8(path);
}

QByteArray name(const QByteArray& path) {
  return path.sliced(path.lastIndexOf('/') + 1);
}

QByteArray baseName(const QByteArray& path) {
  return name(path.first(extensionOf(path)));
}

QByteArray numbered(const QByteArray& path, int number) {
  const qsizetype extension = extensionOf(path);
  return path.first(extension) + " (" + QByteArray::number(number) + ')' + path.sliced(extension);
}

bool exists(const QByteArray& path) {
  struct stat found = {};
  return lstat(path.constData(), &found) == 0;
}

QByteArray firstFree(const QByteArray& path, const std::function<bool(const QByteArray&)>& isTaken) {
  QByteArray candidate = path;
  for (int number = 2; isTaken(candidate); ++number)
    candidate = numbered(path, number);
  return candidate;
}

std::unique_ptr<QFile> openToRead(const QByteArray& path) {
  Descriptor opened(open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));  // a pipe would wait
  struct stat status = {};
  auto file = std::make_unique<QFile>();
  if (!opened.isOpen() || fstat(opened.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
      !file->open(opened.release(), QIODevice::ReadOnly, QFile::AutoCloseHandle))
    return nullptr;
  return file;
}

}  // namespace platform::FilePath
