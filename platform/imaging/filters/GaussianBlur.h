#pragma once

#include "platform/imaging/png/Effort.h"

#include <QImage>
#include <QRect>

namespace platform {

/// The largest standard deviation that `gaussianBlur` takes, in pixels.
inline constexpr double maximumSigma = 10'000;

/// A gaussian of standard deviation `sigma` pixels over premultiplied channels, in time that hardly depends
/// on it. Pixels outside of the picture count as its nearest edge pixel, so that edges don't fade.
///
/// `source` is in Format_RGBA8888_Premultiplied; its y axis points down, as does that of `regionOfInterest`.
/// The result covers the part of the region that lies in the picture, the whole picture if the region is null
/// (the default); it has the very pixels that the blurred whole picture has there. A source that is moved in,
/// shares its pixels with nobody and is blurred as a whole is overwritten and returned, which saves the time
/// that fresh memory costs.
///
/// Against an exact gaussian no channel is off by more than 1 of 255, and none exceeds its pixel's alpha if
/// none did before. `sigma` 0 changes nothing. The result is null if the source is null or of another format,
/// if `sigma` is negative, above `maximumSigma` or no number, if the region has no pixel in the picture, or
/// if there is not enough memory.
[[nodiscard]] QImage gaussianBlur(QImage source, double sigma, const QRect& regionOfInterest = {},
                                  const Effort& effort = {});

/// The distance in pixels, in x as in y, from which a pixel can still influence another one's result. 0 where
/// `gaussianBlur` refuses `sigma`.
[[nodiscard]] int gaussianReach(double sigma);

}  // namespace platform
