#include "tests/support/UpdateSigner.h"

#include "tests/support/Files.h"

#include <QProcess>

#include <stdexcept>

namespace testing_support {

UpdateSigner::UpdateSigner() : key(run(QStringLiteral("key")).trimmed()) {
}

QByteArray UpdateSigner::feed(const QByteArray& json) const {
  return run(QStringLiteral("feed"), json);
}

QByteArray UpdateSigner::packageEntry(const QByteArray& contents) const {
  return run(QStringLiteral("package"), contents).trimmed();
}

QByteArray UpdateSigner::signature(const QByteArray& contents) const {
  return feed(contents).split('\n').first();
}

QByteArray UpdateSigner::run(const QString& command, const QByteArray& contents) const {
  const QString file = folder.filePath(QStringLiteral("contents"));
  writeFile(file, contents);
  QProcess script;
  script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  script.start(QStringLiteral(SORREL_SIGN_UPDATE),
               {command, folder.filePath(QStringLiteral("private")), file});
  if (!script.waitForFinished() || script.exitCode() != 0)
    throw std::runtime_error("sign-update failed");
  return script.readAllStandardOutput();
}

}  // namespace testing_support
