#include "platform/desktop/DesktopEntry.h"

#include <QFile>

namespace platform {

std::optional<DesktopEntry> DesktopEntry::read(const QString& path) {
  constexpr qint64 longestEntry = 1 << 20;  // far more than any; what is longer is something else
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return std::nullopt;
  std::optional<DesktopEntry> entry;
  QByteArray group;
  for (const QByteArray& raw : file.read(longestEntry).split('\n')) {
    const QByteArray line = raw.trimmed();
    if (line.startsWith('['))
      group = line;
    if (group != "[Desktop Entry]")
      continue;
    if (!entry)
      entry.emplace();
    if (const qsizetype equals = line.indexOf('='); equals > 0 && !line.startsWith('#'))
      entry->values.insert(line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
  }
  return entry;
}

QString DesktopEntry::quotedWord(const QString& word) {
  QString quoted;
  for (const QChar letter : word) {
    // A backslash for the command, and one more for each backslash in the file.
    if (QStringLiteral("\"`$").contains(letter))
      quoted += QStringLiteral("\\\\");
    quoted += letter == u'\\' ? QStringLiteral("\\\\\\\\") : letter == u'%' ? QStringLiteral("%%") : letter;
  }
  return u'"' + quoted + u'"';
}

}  // namespace platform
