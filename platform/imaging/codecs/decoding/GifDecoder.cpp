#include "platform/imaging/codecs/decoding/Decoders.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gif_lib.h>
#include <memory>
#include <vector>

namespace platform::decoding {
namespace {

int readBytes(GifFileType* gif, GifByteType* to, int size) {
  auto& rest = *static_cast<Bytes*>(gif->UserData);
  const std::size_t count = std::min(static_cast<std::size_t>(size), rest.size());
  std::memcpy(to, rest.data(), count);
  rest = rest.subspan(count);
  return static_cast<int>(count);
}

struct CloseGif {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;

/// Reads up to the first picture's description. `transparent` becomes the colour number that is clear.
bool findPicture(GifFileType* gif, int& transparent) {
  GifRecordType type = UNDEFINED_RECORD_TYPE;
  while (DGifGetRecordType(gif, &type) == GIF_OK) {
    if (type == IMAGE_DESC_RECORD_TYPE)
      return DGifGetImageDesc(gif) == GIF_OK;
    if (type != EXTENSION_RECORD_TYPE)
      return false;
    int code = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(gif, &code, &block) != GIF_OK)
      return false;
    GraphicsControlBlock control{};
    if (code == GRAPHICS_EXT_FUNC_CODE && block &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK)
      transparent = control.TransparentColor;
    while (block) {
      if (DGifGetExtensionNext(gif, &block) != GIF_OK)
        return false;
    }
  }
  return false;
}

/// The colour numbers of the picture, top row first; empty if the file ends early.
std::vector<GifPixelType> readNumbers(GifFileType* gif, std::size_t width, std::size_t height) {
  struct Pass {
    std::size_t first, step;
  };
  constexpr std::array<Pass, 4> interlaced{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  constexpr std::array<Pass, 1> plain{{{0, 1}}};
  std::vector<GifPixelType> numbers(width * height);
  const std::span<const Pass> passes = gif->Image.Interlace ? std::span<const Pass>(interlaced) : plain;
  for (const Pass& pass : passes)
    for (std::size_t y = pass.first; y < height; y += pass.step)
      if (DGifGetLine(gif, numbers.data() + y * width, static_cast<int>(width)) != GIF_OK)
        return {};
  return numbers;
}

using Palette = std::array<std::array<std::uint8_t, 4>, 256>;

Palette paletteOf(const ColorMapObject& map, int transparent) {
  Palette palette{};
  for (auto& color : palette)
    color[3] = 255;  // numbers beyond the map are black
  for (int i = 0; i < std::min(map.ColorCount, 256); ++i) {
    const GifColorType& color = map.Colors[i];
    palette[static_cast<std::size_t>(i)] = {color.Red, color.Green, color.Blue, 255};
  }
  if (transparent >= 0)
    palette[static_cast<std::size_t>(transparent)] = {0, 0, 0, 0};
  return palette;
}

}  // namespace

bool decodeGif(Bytes file, RowSink& sink) {
  const Gif gif(DGifOpen(&file, readBytes, nullptr));
  int transparent = NO_TRANSPARENT_COLOR;
  if (!gif || !findPicture(gif.get(), transparent))
    return false;
  const GifImageDesc& frame = gif->Image;
  const ColorMapObject* map = frame.ColorMap ? frame.ColorMap : gif->SColorMap;
  // Some files have a screen of no size, or one that is too small for its picture.
  const int width = std::max(gif->SWidth, frame.Left + frame.Width);
  const int height = std::max(gif->SHeight, frame.Top + frame.Height);
  const bool filled = frame.Width == width && frame.Height == height && transparent < 0;
  if (!map || frame.Width == 0 || frame.Height == 0 ||
      !sink.begin({width, height, filled ? Alpha::None : Alpha::Straight, 1, {}}))
    return false;
  const auto frameWidth = static_cast<std::size_t>(frame.Width);
  const auto numbers = readNumbers(gif.get(), frameWidth, static_cast<std::size_t>(frame.Height));
  if (numbers.empty())
    return false;
  const Palette palette = paletteOf(*map, transparent);
  for (int y = 0; y < height; ++y) {
    std::uint8_t* row = sink.row();
    std::memset(row, 0, 4 * static_cast<std::size_t>(width));
    if (y >= frame.Top && y < frame.Top + frame.Height) {
      const GifPixelType* number = numbers.data() + static_cast<std::size_t>(y - frame.Top) * frameWidth;
      for (std::size_t x = 0; x < frameWidth; ++x)
        std::memcpy(row + 4 * (static_cast<std::size_t>(frame.Left) + x), palette[number[x]].data(), 4);
    }
    sink.finishRow();
  }
  return true;
}

}  // namespace platform::decoding
