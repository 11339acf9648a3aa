#pragma once

#include "KeyboardShortcuts/Key.h"

#include <QHash>
#include <QString>

#include <optional>

namespace KeyboardShortcuts {

/// A key whose name can't be asked of the keyboard layout.
struct SpecialKey {
  /// Empty where the name is a text in the user's language, which then is the one under `textKey`.
  QString symbol;
  std::optional<QString> appKitMenuItemKeyEquivalent;
  QString textKey = {};

  [[nodiscard]] QString presentableDescription() const;
};

[[nodiscard]] const QHash<Key, SpecialKey>& keyToSpecialKeyMapping();

}  // namespace KeyboardShortcuts
