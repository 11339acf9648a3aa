#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/encoding/Encoders.h"
#include "platform/imaging/codecs/encoding/Palette.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <gif_lib.h>
#include <memory>

namespace platform::encoding {
namespace {

constexpr std::size_t mostColors = 256;
constexpr int longestSide = 0xffff;

/// Turns rows of RGBA into numbers of a palette's entries and hands what each entry is off on to the pixels
/// that follow, as R. Floyd and L. Steinberg do; every other row runs backwards, so that no stripes appear.
class Ditherer {
 public:
  Ditherer(std::span<const Color> palette, std::size_t width, std::uint8_t clear)
      : colors(palette), nearest(palette), clearNumber(clear), here(width + 2), below(width + 2) {}

  void run(const std::uint8_t* rgba, std::vector<GifPixelType>& numbers) {
    std::fill(below.begin(), below.end(), Error{});
    const std::size_t width = numbers.size();
    for (std::size_t step = 0; step < width; ++step) {
      const std::size_t x = backwards ? width - 1 - step : step;
      numbers[x] = isClear(rgba + 4 * x) ? clearNumber : choose(rgba + 4 * x, x + 1);
    }
    here.swap(below);
    backwards = !backwards;
  }

 private:
  using Error = std::array<int, 3>;  // in sixteenths of a level

  /// `at` counts from 1: there is room for what is handed on beyond either end.
  GifPixelType choose(const std::uint8_t* rgba, std::size_t at) {
    std::array<int, 3> wanted{};
    for (std::size_t channel = 0; channel < 3; ++channel)
      wanted[channel] = std::clamp(rgba[channel] + ((here[at][channel] + 8) >> 4), 0, 255);
    const auto level = [&](std::size_t channel) { return static_cast<std::uint8_t>(wanted[channel]); };
    const std::uint8_t number = nearest({level(0), level(1), level(2)});
    const Color& got = colors[number];
    const std::array<int, 3> levels{got.red, got.green, got.blue};
    const std::size_t ahead = backwards ? at - 1 : at + 1;
    const std::size_t behind = backwards ? at + 1 : at - 1;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const int off = wanted[channel] - levels[channel];
      here[ahead][channel] += 7 * off;
      below[behind][channel] += 3 * off;
      below[at][channel] += 5 * off;
      below[ahead][channel] += off;
    }
    return number;
  }

  std::span<const Color> colors;
  NearestColor nearest;
  const GifPixelType clearNumber;
  std::vector<Error> here;
  std::vector<Error> below;
  bool backwards = false;
};

int writeBytes(GifFileType* gif, const GifByteType* bytes, int size) {
  static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), size);
  return size;
}

struct CloseGif {
  void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
  void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;
using ColorMap = std::unique_ptr<ColorMapObject, CloseGif>;

/// The format's palettes have a power of two entries.
ColorMap makeMap(const std::vector<Color>& palette, std::size_t entries) {
  const std::size_t size = std::bit_ceil(std::max<std::size_t>(2, entries));
  ColorMap map(GifMakeMapObject(static_cast<int>(size), nullptr));
  for (std::size_t i = 0; map && i < palette.size(); ++i)
    map->Colors[i] = {palette[i].red, palette[i].green, palette[i].blue};
  return map;
}

bool writeHeaders(GifFileType* gif, const QImage& picture, const ColorMapObject& map, int clear) {
  EGifSetGifVersion(gif, true);
  constexpr int bitsPerChannel = 8;
  if (EGifPutScreenDesc(gif, picture.width(), picture.height(), bitsPerChannel, 0, &map) != GIF_OK)
    return false;
  if (clear >= 0) {
    const GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, clear};
    std::array<GifByteType, 4> block{};
    EGifGCBToExtension(&control, block.data());
    if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, block.size(), block.data()) != GIF_OK)
      return false;
  }
  return EGifPutImageDesc(gif, 0, 0, picture.width(), picture.height(), false, nullptr) == GIF_OK;
}

bool writeRows(GifFileType* gif, const QImage& picture, Ditherer& ditherer) {
  const auto width = static_cast<std::size_t>(picture.width());
  std::vector<std::uint8_t> row(4 * width);
  std::vector<GifPixelType> numbers(width);
  for (int y = 0; y < picture.height(); ++y) {
    std::memcpy(row.data(), picture.constScanLine(y), row.size());
    unpremultiply(row.data(), width);
    ditherer.run(row.data(), numbers);
    if (EGifPutLine(gif, numbers.data(), picture.width()) != GIF_OK)
      return false;
  }
  return true;
}

}  // namespace

std::optional<QByteArray> encodeGif(const QImage& picture) {
  if (picture.width() > longestSide || picture.height() > longestSide)
    return std::nullopt;
  const bool hasClear = opacityOf(picture) == Opacity::HasAlpha;
  std::vector<Color> palette = choosePalette(picture, hasClear ? mostColors - 1 : mostColors);
  if (palette.empty())
    palette.push_back({});
  const std::size_t clear = palette.size();
  const ColorMap map = makeMap(palette, palette.size() + (hasClear ? 1 : 0));
  QByteArray file;
  Gif gif(EGifOpen(&file, writeBytes, nullptr));
  Ditherer ditherer(palette, static_cast<std::size_t>(picture.width()), static_cast<std::uint8_t>(clear));
  if (!gif || !map ||
      !writeHeaders(gif.get(), picture, *map, hasClear ? static_cast<int>(clear) : NO_TRANSPARENT_COLOR) ||
      !writeRows(gif.get(), picture, ditherer))
    return std::nullopt;
  return EGifCloseFile(gif.release(), nullptr) == GIF_OK ? std::optional(file) : std::nullopt;
}

}  // namespace platform::encoding
