#pragma once

#include "platform/base/Published.h"

#include <QColor>

namespace platform {

/// Whether the desktop's windows are light or dark.
enum class Appearance { Light, Dark };
[[nodiscard]] Appearance currentAppearance();
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

}  // namespace platform
