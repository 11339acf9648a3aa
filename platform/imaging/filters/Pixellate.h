#pragma once

#include "platform/imaging/png/Effort.h"

#include <QImage>
#include <QRect>

namespace platform {

inline constexpr double pixellateGridPoint = 150;

/// Square cells of `cellSize` pixels, each of the mean colour of its pixels inside the picture. Lines between
/// cells pass through the point (`gridPoint`, `gridPoint`) of a space whose y axis points up from the
/// picture's lower left corner. Sizes may be fractions: a pixel belongs to the cell in which its centre lies;
/// on a line that is the one to the right or above.
///
/// `source` is in Format_RGBA8888_Premultiplied; its y axis points down, as does that of `regionOfInterest`.
/// The result covers the part of the region that lies in the picture, the whole picture if the region is null
/// (the default); it has the very pixels that the whole picture in cells has there. A source that is moved
/// in, shares its pixels with nobody and is worked out as a whole is overwritten and returned, which saves
/// the time that fresh memory costs.
///
/// Means are rounded to the nearest, halves up. A `cellSize` up to 1 changes nothing. The result is null if
/// the source is null or of another format, if `cellSize` is not a finite number above 0, if the region has
/// no pixel in the picture, or if there is not enough memory.
[[nodiscard]] QImage pixellate(QImage source, double cellSize, const QRect& regionOfInterest = {},
                               const Effort& effort = {}, double gridPoint = pixellateGridPoint);

/// The largest distance in pixels, in x as in y, between two pixels of a cell. 0 where `pixellate` refuses
/// `cellSize`.
[[nodiscard]] int pixellateReach(double cellSize);

}  // namespace platform
