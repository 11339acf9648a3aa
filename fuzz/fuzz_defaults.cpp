#include "platform/base/UserDefaults.h"
#include "tests/support/LogCapture.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>

namespace {

void require(bool condition, const char* what) {
  if (!condition)
    qFatal("%s", what);
}

QByteArray contents(const QString& path) {
  QFile file(path);
  require(file.open(QIODevice::ReadOnly), "the file is gone");
  return file.readAll();
}

/// Whatever a settings file holds: reading it changes no byte of it, a file that makes no sense is set aside
/// whole, and what was read is there again after the next write.
void readAndWrite(const QByteArray& bytes) {
  static const QTemporaryDir folder;
  const testing_support::LogCapture quiet;
  const QString path = folder.filePath(QStringLiteral("defaults.json"));
  const QString aside = path + QStringLiteral(".broken1");
  QFile file(path);
  require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "no file to read");
  file.close();

  platform::UserDefaults first(path);
  const bool isSetAside = QFile::exists(aside);
  require(contents(isSetAside ? aside : path) == bytes, "reading changed the file");
  require(!isSetAside || first.keys().isEmpty(), "values out of a file that was set aside");
  require(!isSetAside || quiet.logged.size() == 1, "set aside without a word");

  first.set(QStringLiteral("fuzz"), qint64{1});
  first.set(QStringLiteral("fuzz"), true);
  const platform::UserDefaults second(path);
  require(second.keys() == first.keys(), "keys differ after a write");
  for (const QString& key : first.keys())
    require(second.object(key) == first.object(key), "a value differs after a write");
  require(quiet.logged.size() == (isSetAside ? 1 : 0), "what was written can't be read");
  for (const QString& name : QDir(folder.path()).entryList(QDir::Files))
    QFile::remove(folder.filePath(name));
}

}  // namespace

/// The parser is the toolkit's and tells the fuzzer nothing, so the bytes are tried as a value of a sound
/// file too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  readAndWrite(bytes);
  readAndWrite("{\"key\":" + bytes + '}');
  return 0;
}
