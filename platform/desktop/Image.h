#pragma once

#include <QIcon>
#include <QString>

#include <optional>

namespace platform {

/// A picture that may be drawn at several sizes, with words for those who can't see it.
struct Image {
  QIcon icon;
  /// Side lengths in device-independent pixels.
  QSizeF size;
  QString accessibilityDescription;

  /// One of the program's own images; absent if it has none of that name.
  static std::optional<Image> named(const QString& name);
  /// A symbol of the family that the program carries; absent if it has none of that name.
  static std::optional<Image> withSystemSymbolName(const QString& name);
  /// Nothing to see, `size` points wide and high.
  static Image blank(int size);
};

}  // namespace platform
