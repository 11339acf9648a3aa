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
inline constexpr QPointF openingOffset(0, -24);

/// Where the panel goes, on the screen that holds the anchor's lower left corner: below the anchor and below
/// the bar that it may stand in; where there is no room for that above; where there is none either, on its
/// side. Without an anchor, or with one on no screen, it goes to the first of `screens`; without one,
/// somewhat above the middle. It is wholly in the screen's free part if it fits there; otherwise its upper
/// edge and its right one are. A rectangle about the origin stands for the missing screen where there is
/// none.
[[nodiscard]] QRectF targetFrame(const std::optional<QRectF>& anchor,
                                 const std::vector<platform::Screen>& screens);

}  // namespace sorrel::PanelGeometry
