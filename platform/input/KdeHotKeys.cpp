#include "platform/input/KdeHotKeys.h"

namespace platform {
namespace {

/// A value of the file without the escapes that keep it on one line.
QString unescaped(const QString& raw) {
  QString text;
  for (qsizetype index = 0; index < raw.size(); ++index) {
    const bool isEscape = raw.at(index) == u'\\' && index + 1 < raw.size();
    if (isEscape)
      ++index;
    const QChar character = raw.at(index);
    text += !isEscape           ? character
            : character == u't' ? QChar(u'\t')
            : character == u's' ? QChar(u' ')
                                : character;
  }
  return text;
}

/// The first entry of a list that is parted by commas, in which "\," is a comma.
QString firstOfList(const QString& list) {
  QString first;
  for (qsizetype index = 0; index < list.size() && list.at(index) != u','; ++index) {
    if (list.at(index) == u'\\' && index + 1 < list.size())
      ++index;
    first += list.at(index);
  }
  return first;
}

}  // namespace

QStringList kdeAccelerators(const QByteArray& text) {
  QStringList accelerators;
  for (const QByteArray& line : text.split('\n')) {
    const qsizetype equals = line.indexOf('=');
    if (equals <= 0 || line.startsWith('#') || line.startsWith('[') || line.startsWith("_k_friendly_name"))
      continue;
    // The accelerators in use, parted by tabs; the ones by default; what they do.
    const QString inUse = firstOfList(unescaped(QString::fromUtf8(line.sliced(equals + 1).trimmed())));
    for (const QString& accelerator : inUse.split(u'\t'))
      if (!accelerator.isEmpty() && accelerator != u"none")
        accelerators << accelerator;
  }
  return accelerators;
}

}  // namespace platform
