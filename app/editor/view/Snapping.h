#pragma once

#include <QPointF>
#include <QSizeF>

#include <optional>

namespace sorrel {

/// Where a dragged watermark comes to lie, in display space.
struct Snap {
  QPointF center;
  /// The lines that it keeps to, absent where it keeps to none: x of the vertical, y of the horizontal one.
  std::optional<double> guideV;
  std::optional<double> guideH;
};

/// The place of something of this size that is dragged to `proposed`: it keeps to a margin of 24 or to the
/// middle of the picture where that is at most 12 away, across and along each by itself. At a margin the
/// edge meets the line, not the centre.
[[nodiscard]] Snap applySnap(const QPointF& proposed, const QSizeF& size, const QSizeF& displaySize);

}  // namespace sorrel
