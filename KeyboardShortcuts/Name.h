#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <QMetaType>

#include <compare>

namespace KeyboardShortcuts {

/// What a shortcut does, for desktops on which the user himself gives a program its keys.
struct Purpose {
  QString text = {};    // in the user's language
  QString option = {};  // of the program's command line, which does the same
};

/// A named slot that holds one shortcut, which the user may change or empty. Names with the same text are the
/// same name.
///
/// Making one declares it: a default goes into the settings if they don't know the name yet, which is once in
/// their life, and the shortcut works from then on. So a program makes each of its names at the first use,
/// not while its statics are set up.
class Name {
 public:
  /// No name at all; declares nothing.
  Name() = default;
  explicit Name(const QString& rawValue, const std::optional<Shortcut>& defaultShortcut = std::nullopt,
                const Purpose& purpose = {});

  [[nodiscard]] const QString& rawValue() const { return text; }
  [[nodiscard]] const std::optional<Shortcut>& defaultShortcut() const { return fallback; }
  [[nodiscard]] const Purpose& purpose() const { return description; }
  /// As getShortcut() and setShortcut() of the service.
  [[nodiscard]] std::optional<Shortcut> shortcut() const;
  void setShortcut(const std::optional<Shortcut>& shortcut) const;

  bool operator==(const Name& other) const { return text == other.text; }
  std::strong_ordering operator<=>(const Name& other) const { return text.compare(other.text) <=> 0; }

 private:
  QString text;
  std::optional<Shortcut> fallback;
  Purpose description;
};

}  // namespace KeyboardShortcuts

Q_DECLARE_METATYPE(KeyboardShortcuts::Name)
