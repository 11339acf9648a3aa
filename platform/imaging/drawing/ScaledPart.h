#pragma once

#include <QImage>
#include <QRect>

namespace platform {

/// A part of a picture, or all of it.
struct PicturePart {
  QImage pixels;   // 8-bit premultiplied RGBA
  QPoint topLeft;  // of these pixels in the whole picture
  QSize whole;     // of the picture
};

/// How what lies between the picture's pixels is filled in where it is enlarged.
enum class Enlarging {
  Smooth,   // a slope from pixel to pixel
  Squares,  // the pixels are seen
};

/// The pixels of a picture of that size that one has to know to scale it and see `part` of the result.
[[nodiscard]] QRect sourceOfScaledPart(const QSize& whole, const QSize& scaled, const QRect& part);

/// What one sees in `part` of the picture stretched to the size `scaled`. Each pixel is worked out from its
/// place in the whole alone, so parts fit together without a seam, however they are cut. Where it is made
/// smaller each pixel is the mean of the area that it stands for. Null without pixels.
[[nodiscard]] QImage scaledPart(const PicturePart& picture, const QSize& scaled, const QRect& part,
                                Enlarging enlarging);

}  // namespace platform
