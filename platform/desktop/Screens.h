#pragma once

#include "platform/x11/X11Desktop.h"

#include <QRectF>

#include <optional>
#include <vector>

namespace platform {

/// Coordinates here, and wherever a place on the desktop is told, are the toolkit's: device-independent
/// pixels, y down.
struct Screen {
  QRectF frame;
  /// The part that the desktop's bars leave free.
  QRectF visibleFrame;

  bool operator==(const Screen&) const = default;
};

/// The one with the keyboard first; empty while there is none.
[[nodiscard]] std::vector<Screen> screens();

/// Where a place that the X server tells, in device pixels, is in the toolkit's coordinates.
[[nodiscard]] QRectF fromDevicePixels(const QRect& place);

// The two decisions, apart from those who know the desktop:

/// The screen that has the keyboard: the one with the middle of the active window, or with the pointer where
/// there is no such window, or one that covers several screens (the desktop itself). An index of `screens`,
/// all in the same coordinates.
[[nodiscard]] size_t screenWithKeyboard(const std::vector<QRect>& screens, const std::optional<QRect>& active,
                                        const QPoint& pointer);

/// What the bars that stand on a screen leave of it; all in device pixels.
[[nodiscard]] QRect visiblePart(const QRect& screen, const QSize& root, const std::vector<X11Bar>& bars);

}  // namespace platform
