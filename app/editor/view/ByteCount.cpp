#include "app/editor/view/ByteCount.h"

#include "app/settings/LocalizationManager.h"

#include <array>

namespace sorrel {
namespace {

struct Unit {
  const char* key;
  int decimals;
};

constexpr std::array units = {Unit{"editor.fileSize.bytes", 0}, Unit{"editor.fileSize.kilobytes", 0},
                              Unit{"editor.fileSize.megabytes", 1}, Unit{"editor.fileSize.gigabytes", 2},
                              Unit{"editor.fileSize.terabytes", 2}};

/// Without zeros at the end of its decimals.
QString shortest(double value, int decimals) {
  QString text = QString::number(value, 'f', decimals);
  while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.')))
    text.chop(1);
  return text;
}

}  // namespace

QString fileSizeText(qint64 byteCount) {
  if (byteCount <= 0)
    return localized(QStringLiteral("editor.fileSize.zero"));
  if (byteCount == 1)
    return localized(QStringLiteral("editor.fileSize.byte")).arg(1);
  auto value = static_cast<double>(byteCount);
  size_t unit = 0;
  const auto shown = [&] { return shortest(value, units[unit].decimals); };
  // What would be shown as a thousand is one of the next unit.
  while (unit + 1 < units.size() && shown().toDouble() >= 1000) {
    value /= 1000;
    ++unit;
  }
  return localized(QString::fromLatin1(units[unit].key)).arg(shown());
}

}  // namespace sorrel
