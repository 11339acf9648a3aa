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

/// The one with the keyboard first; empty while there is none. A Wayland compositor tells how much of a
/// screen its bars leave, at the most, but not where they stand. There they are taken to be at the edges that
/// `onBar`, a place on one of them, is next to; without one, above and on the left.
[[nodiscard]] std::vector<Screen> screens(const std::optional<QPointF>& onBar = std::nullopt);

/// Where a place that the X server tells, in device pixels, is in the toolkit's coordinates.
[[nodiscard]] QRectF fromDevicePixels(const QRect& place);

// The two decisions, apart from those who know the desktop:

/// The screen that has the keyboard: the one with the middle of the active window, or with the pointer where
/// there is no such window, or one that covers several screens (the desktop itself). An index of `screens`,
/// all in the same coordinates.
[[nodiscard]] size_t screenWithKeyboard(const std::vector<QRect>& screens, const std::optional<QRect>& active,
                                        const QPoint& pointer);

/// The part of that size which bars leave of a screen, where all that is known of them is a place on one.
[[nodiscard]] QRectF visiblePart(const QRectF& screen, const QSizeF& freeSize,
                                 const std::optional<QPointF>& onBar);

/// What the bars that stand on a screen leave of it; all in device pixels.
[[nodiscard]] QRect visiblePart(const QRect& screen, const QSize& root, const std::vector<X11Bar>& bars);

}  // namespace platform
