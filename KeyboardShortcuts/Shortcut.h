#pragma once

#include "KeyboardShortcuts/Key.h"
#include "platform/base/Event.h"

#include <QString>

#include <optional>

namespace KeyboardShortcuts {

class Name;

/// A key and the modifiers to hold with it. Modifiers are kept in normal form: only the five that a shortcut
/// may have, so that shortcuts that differ in a caps lock bit are equal.
class Shortcut {
 public:
  /// Any key code is accepted; one that the keyboard lacks can't be registered later.
  Shortcut(qint64 carbonKeyCode, qint64 carbonModifiers);
  Shortcut(Key key, platform::ModifierFlags modifiers);

  /// What a key event pressed; nullopt for any other event, and for a key without a code. The function flag,
  /// which marks all function and arrow keys, doesn't count as a modifier.
  [[nodiscard]] static std::optional<Shortcut> forEvent(const platform::Event& event);
  /// The shortcut stored for a name.
  [[nodiscard]] static std::optional<Shortcut> forName(const Name& name);

  /// The stored form, a JSON object with the two numbers, and back: nullopt for any other text.
  [[nodiscard]] QString encoded() const;
  [[nodiscard]] static std::optional<Shortcut> decode(const QString& text);

  [[nodiscard]] qint64 carbonKeyCode() const { return code; }
  [[nodiscard]] qint64 carbonModifiers() const { return normalModifiers; }
  [[nodiscard]] Key key() const { return Key(code); }
  [[nodiscard]] platform::ModifierFlags modifiers() const;

  /// For people to read: the modifiers' symbols and the key's name in the current keyboard layout, U+FFFD if
  /// it has none.
  [[nodiscard]] QString presentableDescription() const;
  /// What a menu item with this shortcut has for its key equivalent; nullopt if menus can't have the key.
  [[nodiscard]] std::optional<QString> nsMenuItemKeyEquivalent() const;

  bool operator==(const Shortcut&) const = default;

 private:
  [[nodiscard]] std::optional<QString> keyToCharacter() const;

  qint64 code;
  qint64 normalModifiers;
};

inline size_t qHash(const Shortcut& shortcut, size_t seed = 0) {
  return qHashMulti(seed, shortcut.carbonKeyCode(), shortcut.carbonModifiers());
}

}  // namespace KeyboardShortcuts
