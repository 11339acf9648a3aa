#include "tools/screencapture/wayland/Picture.h"

#include <cstring>
#include <wayland-client-protocol.h>

namespace screencapture::wayland {

namespace {

using Convert = std::uint32_t (*)(std::uint32_t);

constexpr std::uint32_t asItIs(std::uint32_t pixel) {
  return pixel;
}

/// Red and blue change places.
constexpr std::uint32_t swapped(std::uint32_t pixel) {
  return (pixel & 0xff00) | (pixel >> 16 & 0xff) | (pixel & 0xff) << 16;
}

/// From ten bits a channel.
constexpr std::uint32_t reduced(std::uint32_t pixel) {
  return (pixel >> 22 & 0xff) << 16 | (pixel >> 12 & 0xff) << 8 | (pixel >> 2 & 0xff);
}

/// How a pixel of four bytes becomes one of ours; nullptr for other formats.
Convert conversionOf(std::uint32_t format) {
  switch (format) {
    case WL_SHM_FORMAT_XRGB8888:
    case WL_SHM_FORMAT_ARGB8888:
      return asItIs;
    case WL_SHM_FORMAT_XBGR8888:
    case WL_SHM_FORMAT_ABGR8888:
      return swapped;
    case WL_SHM_FORMAT_XRGB2101010:
    case WL_SHM_FORMAT_ARGB2101010:
      return reduced;
    case WL_SHM_FORMAT_XBGR2101010:
    case WL_SHM_FORMAT_ABGR2101010:
      return [](std::uint32_t pixel) { return swapped(reduced(pixel)); };
    default:
      return nullptr;
  }
}

/// Where a pixel of the upright picture lies in the output's own memory.
Point sourceOf(Point upright, Size memory, const Transform& transform) {
  // The output shows a turned and mirrored copy of its memory; this goes the way back.
  const int right = memory.width - 1, bottom = memory.height - 1;
  if (transform.isMirrored)
    upright.x = (transform.swapsSides() ? bottom : right) - upright.x;
  switch (transform.quarters) {
    case 1:
      return {upright.y, bottom - upright.x};
    case 2:
      return {right - upright.x, bottom - upright.y};
    case 3:
      return {right - upright.y, upright.x};
    default:
      return upright;
  }
}

}  // namespace

Picture::Picture(Size pixels, std::vector<std::uint32_t> values)
    : extent(pixels), rowLength(static_cast<std::size_t>(pixels.width)) {
  const auto owned = std::make_shared<const std::vector<std::uint32_t>>(std::move(values));
  begin = owned->data();
  memory = owned;
}

Picture Picture::part(const Rectangle& inside) const {
  return {{inside.width, inside.height}, row(inside.y) + inside.x, rowLength, memory};
}

std::optional<Picture> uprightPicture(const RawPixels& raw, const Transform& transform, RowOrder order,
                                      std::shared_ptr<const void> owner) {
  const Convert convert = conversionOf(raw.format);
  const auto [width, height] = raw.size;
  if (!convert || width <= 0 || height <= 0 || raw.stride < static_cast<std::size_t>(width) * 4 ||
      raw.stride % 4 != 0 || raw.bytes.size() < raw.stride * static_cast<std::size_t>(height))
    return std::nullopt;
  const auto* const first = reinterpret_cast<const std::uint32_t*>(raw.bytes.data());
  const bool isUpright = transform.quarters == 0 && !transform.isMirrored && order == RowOrder::FromTop;
  if (isUpright && convert == asItIs)
    return Picture(raw.size, first, raw.stride / 4, std::move(owner));
  const Size upright = transform.swapsSides() ? Size{height, width} : raw.size;
  std::vector<std::uint32_t> values;
  values.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < upright.height; ++y) {
    for (int x = 0; x < upright.width; ++x) {
      const Point at = sourceOf({x, y}, raw.size, transform);
      const int row = order == RowOrder::FromTop ? at.y : height - 1 - at.y;
      values.push_back(
          convert(first[static_cast<std::size_t>(row) * (raw.stride / 4) + static_cast<std::size_t>(at.x)]));
    }
  }
  return Picture(upright, std::move(values));
}

}  // namespace screencapture::wayland
