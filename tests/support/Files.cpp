#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace testing_support {

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw std::runtime_error("can't read " + path.toStdString());
  return file.readAll();
}

void writeFile(const QString& path, const QByteArray& contents) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
    throw std::runtime_error("can't write " + path.toStdString());
}

void setModified(const QString& path, const QDateTime& time) {
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(time, QFileDevice::FileModificationTime))
    throw std::runtime_error("can't date " + path.toStdString());
}

}  // namespace testing_support
