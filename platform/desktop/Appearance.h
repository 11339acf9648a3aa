#pragma once

#include "platform/base/Published.h"

#include <QColor>

class QPalette;

namespace platform {

/// Whether the desktop's windows are light or dark.
enum class Appearance { Light, Dark };
[[nodiscard]] Appearance currentAppearance();
/// The same of whatever is drawn with this palette.
[[nodiscard]] Appearance appearanceOf(const QPalette& palette);
/// Calls `handler` after each change. Main thread only.
[[nodiscard]] Subscription observeAppearance(std::function<void()> handler);

/// A colour that differs between the two appearances.
struct Color {
  QRgb light = 0xff000000;
  QRgb dark = 0xff000000;

  [[nodiscard]] QColor resolved(Appearance appearance = currentAppearance()) const {
    return QColor::fromRgba(appearance == Appearance::Dark ? dark : light);
  }
  /// From two opaque colours 0xRRGGBB, in sRGB.
  static constexpr Color lightDark(quint32 light, quint32 dark) {
    return {0xff000000 | light, 0xff000000 | dark};
  }

  bool operator==(const Color&) const = default;
};

/// All the colours of the toolkit's own widgets: for a desktop that prefers one appearance, or for a window
/// that keeps to one whatever the desktop prefers. `accent` marks what is selected.
[[nodiscard]] QPalette paletteOf(Appearance appearance, const Color& accent);

}  // namespace platform
