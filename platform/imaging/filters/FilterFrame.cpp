#include "platform/imaging/filters/FilterFrame.h"

#include "platform/imaging/filters/BlankPicture.h"

#include <algorithm>
#include <new>
#include <utility>

namespace platform {

namespace {

SourceRows sourceRows(const QImage& source) {
  return {source.constBits(), static_cast<std::size_t>(source.bytesPerLine()), source.width(),
          source.height()};
}

ResultRows resultRows(QImage& result) {
  return {result.bits(), static_cast<std::size_t>(result.bytesPerLine())};
}

}  // namespace

std::optional<QRect> regionToFilter(const QImage& source, const QRect& regionOfInterest) {
  if (source.isNull() || source.format() != QImage::Format_RGBA8888_Premultiplied)
    return std::nullopt;
  if (regionOfInterest.isNull())
    return source.rect();
  const QRect region = regionOfInterest & source.rect();
  return region.isEmpty() ? std::nullopt : std::optional(region);
}

QImage filtered(QImage source, const QRect& region, Destination destination,
                const std::function<void(const SourceRows&, const ResultRows&)>& work) {
  const bool overwrites =
      destination == Destination::SourceIfUnshared && region == source.rect() && source.isDetached();
  QImage result = overwrites ? std::exchange(source, {}) : blankLike(source, region.size());
  if (result.isNull())
    return {};
  try {
    const ResultRows rows = resultRows(result);
    work(sourceRows(overwrites ? result : source), rows);
  } catch (const std::bad_alloc&) {
    return {};  // told to the caller, as a null picture
  }
  return result;
}

int smallestBand(int width) {
  constexpr int pixelsWorthAThread = 32'768;
  return std::max(1, pixelsWorthAThread / std::max(1, width));
}

}  // namespace platform
