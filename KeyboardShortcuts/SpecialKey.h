#pragma once

#include "KeyboardShortcuts/Key.h"

#include <QHash>
#include <QString>

#include <optional>

namespace KeyboardShortcuts {

/// A key whose name can't be asked of the keyboard layout.
struct SpecialKey {
  /// Empty for the space bar, whose name is a text in the user's language.
  QString symbol;
  std::optional<QString> appKitMenuItemKeyEquivalent;

  [[nodiscard]] QString presentableDescription() const;
};

[[nodiscard]] const QHash<Key, SpecialKey>& keyToSpecialKeyMapping();

}  // namespace KeyboardShortcuts
