#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace sorrel {

// What a pointer does to the rectangle that a crop would keep. Everything is in display space.

/// By what the rectangle is held.
enum class CropHandle { topLeft, topRight, bottomLeft, bottomRight, top, bottom, left, right, move };

/// The handle at a point, for a canvas of so many screen points a display unit; absent outside the rectangle
/// and farther from it than a handle reaches. Where several are in reach corners come before edges, left
/// before right and top before bottom.
[[nodiscard]] std::optional<CropHandle> cropHandle(const QPointF& point, const QRectF& rectangle,
                                                   double canvasScale);

/// The rectangle after its handle was dragged that far from where it stood at the start. It stays on the
/// picture, and a side stays at least 24 long, even where the picture is smaller than that.
[[nodiscard]] QRectF applyCropDrag(CropHandle handle, const QRectF& start, const QPointF& translation,
                                   const QSizeF& displaySize);

/// Whether the rectangle differs from the whole picture by more than half a unit.
[[nodiscard]] bool isCropModified(const QRectF& rectangle, const QSizeF& displaySize);

}  // namespace sorrel
