#include "tools/screencapture/wayland/FrozenScreen.h"

#include <algorithm>

namespace screencapture::wayland {

namespace {

constexpr platform::ChannelLayout blueFirst{4, 2, 1, 0};

}  // namespace

std::optional<platform::PngFile> encode(const Picture& picture) {
  const auto [width, height] = picture.size();
  return platform::encodePng({reinterpret_cast<const std::uint8_t*>(picture.row(0)), width, height,
                              picture.stride() * sizeof(std::uint32_t), blueFirst});
}

std::optional<platform::PngFile> FrozenScreen::encode(const Rectangle& part) const {
  if (const auto own = ownPixelsOf(part))
    return wayland::encode(pictures[own->output].part(own->pixels));
  return wayland::encode(Picture({part.width, part.height}, pixels(part)));
}

std::vector<std::uint32_t> FrozenScreen::pixels(const Rectangle& part) const {
  std::vector<std::uint32_t> all(static_cast<std::size_t>(part.width) *
                                 static_cast<std::size_t>(part.height));
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const Rectangle seen = part.intersected(layout.places[i]);
    for (int y = seen.y; y < seen.bottom(); ++y) {
      std::uint32_t* const to = &all[static_cast<std::size_t>((y - part.y) * part.width + seen.x - part.x)];
      copyRow(i, y, seen.x, seen.right(), to);
      std::for_each(to, to + seen.width, [](std::uint32_t& pixel) { pixel |= 0xff000000; });
    }
  }
  return all;
}

Size FrozenScreen::sizeOf(const Rectangle& part) const {
  const auto own = ownPixelsOf(part);
  return own ? Size{own->pixels.width, own->pixels.height} : Size{part.width, part.height};
}

void FrozenScreen::copyRow(std::size_t output, int y, int left, int right, std::uint32_t* to) const {
  const Rectangle& place = layout.places[output];
  const Picture& picture = pictures[output];
  const auto [width, height] = picture.size();
  // Of a smaller scale than the screen's: each pixel is shown as often as it takes.
  const auto scaled = [](int at, int length, int own) {
    return length == own ? at : static_cast<int>(static_cast<std::int64_t>(at) * own / length);
  };
  const std::uint32_t* const from = picture.row(scaled(y - place.y, place.height, height));
  if (width == place.width) {
    std::copy(from + left - place.x, from + right - place.x, to);
    return;
  }
  for (int x = left; x < right; ++x)
    *to++ = from[scaled(x - place.x, place.width, width)];
}

std::optional<FrozenScreen::Own> FrozenScreen::ownPixelsOf(const Rectangle& part) const {
  for (std::size_t i = 0; i < pictures.size(); ++i)
    if (part.intersected(layout.places[i]) == part)
      return Own{i, ownPixels(part, layout.places[i], pictures[i].size())};
  return std::nullopt;
}

}  // namespace screencapture::wayland
