#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/Premultiply.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <png.h>
#include <random>
#include <vector>

using namespace platform;

namespace {

struct Kind {
  int colorType;
  int depth;
};
constexpr Kind kinds[] = {
    {PNG_COLOR_TYPE_GRAY, 1},    {PNG_COLOR_TYPE_GRAY, 2},    {PNG_COLOR_TYPE_GRAY, 4},
    {PNG_COLOR_TYPE_GRAY, 8},    {PNG_COLOR_TYPE_PALETTE, 1}, {PNG_COLOR_TYPE_PALETTE, 2},
    {PNG_COLOR_TYPE_PALETTE, 4}, {PNG_COLOR_TYPE_PALETTE, 8}, {PNG_COLOR_TYPE_RGB, 8},
    {PNG_COLOR_TYPE_RGB, 8},     {PNG_COLOR_TYPE_RGBA, 8},    {PNG_COLOR_TYPE_GRAY_ALPHA, 8}};

/// Random rows, half of their bytes repeated, with a random filter each and chunks of a random size.
QByteArray writtenByLibrary(const Kind& kind, std::size_t width, std::size_t height, std::mt19937& random) {
  QByteArray file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp to, png_bytep bytes, std::size_t size) {
        static_cast<QByteArray*>(png_get_io_ptr(to))
            ->append(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
      },
      nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), kind.depth,
               kind.colorType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  const auto byte = [&] { return static_cast<png_byte>(random() % 256); };
  const bool clears = random() % 2 == 0;
  if (kind.colorType == PNG_COLOR_TYPE_PALETTE) {
    std::vector<png_color> palette(std::size_t{1} << kind.depth);
    std::ranges::generate(palette, [&] { return png_color{byte(), byte(), byte()}; });
    png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    std::array<png_byte, 2> alpha{byte(), byte()};
    if (clears)
      png_set_tRNS(png, info, alpha.data(), 2, nullptr);
  } else if ((kind.colorType & PNG_COLOR_MASK_ALPHA) == 0 && clears) {
    const auto few = static_cast<png_uint_16>(random() % (1U << std::min(kind.depth, 2)));
    const png_color_16 clear{0, few, few, few, few};
    png_set_tRNS(png, info, nullptr, 0, &clear);
  }
  png_set_filter(png, 0, PNG_ALL_FILTERS);  // else the library keeps no row above to go by
  png_set_compression_buffer_size(png, 6 + random() % 3000);
  png_set_compression_level(png, static_cast<int>(random() % 10));
  png_write_info(png, info);
  std::vector<png_byte> row(png_get_rowbytes(png, info));
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t i = 0; i < row.size(); ++i)
      if (random() % 2 == 0)
        row[i] = static_cast<png_byte>(random() % (random() % 2 == 0 ? 256 : 4));
    if (width > 1 && height > 1)  // else the library knows fewer
      png_set_filter(png, 0, PNG_FILTER_NONE << (random() % 5));
    png_write_row(png, row.data());
  }
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

/// As RGBA with 8 bits a channel.
QImage readByLibrary(const QByteArray& file) {
  struct Rest {
    const char* bytes;
  } rest{file.constData()};
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_read_fn(png, &rest, [](png_structp reader, png_bytep to, std::size_t size) {
    auto& from = *static_cast<Rest*>(png_get_io_ptr(reader));
    std::copy_n(from.bytes, size, reinterpret_cast<char*>(to));
    from.bytes += size;
  });
  png_read_info(png, info);
  const bool hasAlpha = (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                        png_get_valid(png, info, PNG_INFO_tRNS) != 0;
  png_set_expand(png);
  png_set_gray_to_rgb(png);
  png_set_filler(png, 0xff, PNG_FILLER_AFTER);
  png_read_update_info(png, info);
  const auto width = static_cast<int>(png_get_image_width(png, info));
  QImage image(width, static_cast<int>(png_get_image_height(png, info)),
               QImage::Format_RGBA8888_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    png_read_row(png, image.scanLine(y), nullptr);
    if (hasAlpha)
      premultiply(image.scanLine(y), static_cast<std::size_t>(width));
  }
  png_destroy_read_struct(&png, &info, nullptr);
  return image;
}

}  // namespace

TEST(PngRows, areTheLibrarysWhateverTheFile) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    const Kind& kind = kinds[static_cast<std::size_t>(round) % std::size(kinds)];
    const bool isLarge = round % 25 == 0;  // more than the reader holds at once
    const std::size_t width = 1 + random() % (isLarge ? 3000 : 70),
                      height = 1 + random() % (isLarge ? 200 : 40);
    const QByteArray file = writtenByLibrary(kind, width, height, random);
    const auto picture = ImageDecoder::decode(file);
    ASSERT_TRUE(picture) << "round " << round;
    ASSERT_EQ(*picture, readByLibrary(file)) << "round " << round << ", type " << kind.colorType << " of "
                                             << kind.depth << " bits, " << width << 'x' << height;
  }
}

TEST(PngRows, areRefusedIfAnyByteOfThemIsDamaged) {
  std::mt19937 random(12);
  const QByteArray file = writtenByLibrary(kinds[8], 50, 40, random);
  for (auto at = file.indexOf("IDAT"); at < file.size() - 12;
       at += 1 + static_cast<qsizetype>(random() % 20)) {
    QByteArray damaged = file;
    damaged[at] = static_cast<char>(damaged[at] ^ (1 << random() % 8));
    EXPECT_FALSE(ImageDecoder::decode(damaged)) << at << " of " << file.size();
  }
}
