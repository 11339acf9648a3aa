#pragma once

#include <QImage>
#include <QRect>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace platform {

// What the filters have in common before and after the work on pixels.

/// The part of a picture that a filter has to work out; null asks for all of it. Empty if the picture is null
/// or not in Format_RGBA8888_Premultiplied, or if the region has no pixel in it.
[[nodiscard]] std::optional<QRect> regionToFilter(const QImage& source, const QRect& regionOfInterest);

/// Rows of a picture's bytes, from the top. Reading past an edge gives the row or pixel at the edge.
struct SourceRows {
  const std::uint8_t* bytes;
  std::size_t stride;
  int width;
  int height;

  [[nodiscard]] const std::uint8_t* row(int y) const {
    const int clamped = y < 0 ? 0 : y < height ? y : height - 1;
    return bytes + static_cast<std::size_t>(clamped) * stride;
  }
};

/// Rows of the result's bytes, for threads to write to.
struct ResultRows {
  std::uint8_t* bytes;
  std::size_t stride;

  [[nodiscard]] std::uint8_t* row(int y) const { return bytes + static_cast<std::size_t>(y) * stride; }
};

enum class Destination { FreshMemory, SourceIfUnshared };

/// Has `work` fill in a region of the picture, and returns it with all that belongs to the source besides its
/// pixels. `SourceIfUnshared` lets the rows be the same for a region that is the whole picture, if nobody
/// else has its pixels. Null if there is not enough memory, also where `work` throws std::bad_alloc.
[[nodiscard]] QImage filtered(QImage source, const QRect& region, Destination destination,
                              const std::function<void(const SourceRows&, const ResultRows&)>& work);

/// Rows below which work isn't worth another core, for a picture so wide.
[[nodiscard]] int smallestBand(int width);

}  // namespace platform
