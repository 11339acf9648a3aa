#pragma once

#include <QRectF>

#include <vector>

namespace platform {

/// Screen coordinates here have their origin at the lower left corner of the main screen, x to the right and
/// y up, in device-independent pixels.
struct Screen {
  QRectF frame;
  /// The part that the desktop's bars leave free.
  QRectF visibleFrame;

  bool operator==(const Screen&) const = default;
};

/// The main screen first; empty while there is none.
[[nodiscard]] std::vector<Screen> screens();

/// Turns a rectangle of the window system's (origin at the upper left, y down) into screen coordinates.
[[nodiscard]] QRectF screenRect(const QRectF& windowSystemRect);

/// And back again.
[[nodiscard]] QRectF windowSystemRect(const QRectF& screenRect);

/// What a panel hangs below.
struct PanelMetrics {
  QSizeF size;
  qreal gap = 0;
};

/// The rectangle to report as the frame of a status item, in screen coordinates, so that a panel which hangs
/// its top edge `gap` below it is wholly visible: `itemFrame` itself where there is room below. Where the bar
/// lies at the bottom or at a side, the rectangle moves up until the panel stands above the bar, or clear of
/// the screen's lower edge beside it.
[[nodiscard]] QRectF panelAnchor(const QRectF& itemFrame, const Screen& screen, const PanelMetrics& panel);

}  // namespace platform
