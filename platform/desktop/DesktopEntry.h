#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace platform {

/// What a desktop entry, a file of the freedesktop rules, says in its group "Desktop Entry": of keys in
/// several languages the general one, values as they stand in the file.
class DesktopEntry {
 public:
  /// Absent where there is no such file, or one without that group.
  [[nodiscard]] static std::optional<DesktopEntry> read(const QString& path);

  /// Empty where it isn't there.
  [[nodiscard]] QByteArray value(const QByteArray& key) const { return values.value(key); }

  /// A command's word such that it is taken for that and nothing else, also with blanks and percent signs.
  [[nodiscard]] static QString quotedWord(const QString& word);

 private:
  QHash<QByteArray, QByteArray> values;
};

}  // namespace platform
