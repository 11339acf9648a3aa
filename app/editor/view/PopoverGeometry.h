#pragma once

#include <QRect>

/// Where the options popover lies beside the tool rail, in points from the editor's upper left corner.
namespace sorrel::PopoverGeometry {

inline constexpr int contentWidth = 176;
inline constexpr int padding = 13;
inline constexpr int panelWidth = contentWidth + 2 * padding;
inline constexpr QSize arrowSize{7, 13};
/// From the popover's top.
inline constexpr int arrowTop = 16;

/// The popover of the tool at this place in the rail, its arrow included. The panel is as high as its
/// content, where that is known and there is room; but in a low window it goes on beyond the lower edge
/// before it gets lower than is of use.
[[nodiscard]] QRect popover(int toolIndex, int availableHeight, int contentHeight);

}  // namespace sorrel::PopoverGeometry
