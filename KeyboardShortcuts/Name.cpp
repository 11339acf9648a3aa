#include "KeyboardShortcuts/Name.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"

namespace KeyboardShortcuts {

Name::Name(const QString& rawValue, const std::optional<Shortcut>& defaultShortcut, const Purpose& purpose)
    : text(rawValue), fallback(defaultShortcut), description(purpose) {
  if (fallback && !userDefaultsContains(*this))
    userDefaultsSet(*this, *fallback);
  initialize();
}

std::optional<Shortcut> Name::shortcut() const {
  return getShortcut(*this);
}

void Name::setShortcut(const std::optional<Shortcut>& shortcut) const {
  KeyboardShortcuts::setShortcut(shortcut, *this);
}

std::optional<Shortcut> Shortcut::forName(const Name& name) {
  return getShortcut(name);
}

}  // namespace KeyboardShortcuts
