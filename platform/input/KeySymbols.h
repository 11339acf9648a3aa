#pragma once

#include "platform/input/HotKeyService.h"

#include <QHash>

#include <optional>

struct xkb_keymap;

namespace platform {

/// Which key prints a symbol, by the numbers of X (XKB_KEY_a), in any layout of a keymap.
class KeySymbols {
 public:
  struct Place {
    int keyCode = 0;  // virtual
    /// What must be held besides, to print the symbol: nothing or Shift.
    HotKeyModifiers modifiers;
    bool operator==(const Place&) const = default;
  };

  KeySymbols() = default;
  explicit KeySymbols(xkb_keymap* keymap);

  /// A key that prints it by itself goes before one that needs Shift, and the first layout before the second.
  /// Capital letters count as small ones. nullopt if no key with a name does.
  [[nodiscard]] std::optional<Place> place(quint32 symbol) const;

 private:
  QHash<quint32, Place> places;
};

}  // namespace platform
