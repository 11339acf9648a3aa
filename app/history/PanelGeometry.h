#pragma once

#include "platform/desktop/Screens.h"

#include <optional>
#include <vector>

namespace sorrel::PanelGeometry {

inline constexpr QSize size(460, 500);
inline constexpr int cornerRadius = 14;
/// Between the status item and the panel's upper edge.
inline constexpr int gap = 4;
/// Between the panel's sides and those of the screen's free part.
inline constexpr int sideMargin = 8;
/// Where the panel starts from as it opens: a little above its place.
inline constexpr QPointF openingOffset(0, 24);

/// Where the panel goes, in screen coordinates: below the anchor, on the anchor's screen; without an anchor,
/// somewhat above the middle of the main screen, which is the first of `screens`. A null rectangle at the
/// origin stands for the missing screen where there is none.
[[nodiscard]] QRectF targetFrame(const std::optional<QRectF>& anchor,
                                 const std::vector<platform::Screen>& screens);

}  // namespace sorrel::PanelGeometry
