#include "platform/imaging/PngEncoder.h"
#include "tests/support/DecodedPng.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace platform;

namespace {

struct Picture {
  PictureView view;
  std::vector<std::uint8_t> memory;

  Picture(int width, int height, std::size_t padding, ChannelLayout layout, std::mt19937& random) {
    const std::size_t stride = static_cast<std::size_t>(width * layout.bytesPerPixel) + padding;
    memory.resize(stride * static_cast<std::size_t>(height));
    // Half flat runs, half noise, so that predictions both hit and miss and bytes wrap around zero.
    for (std::size_t i = 0; i < memory.size(); ++i)
      memory[i] = (random() & 4) && i >= 4 ? memory[i - 4] : static_cast<std::uint8_t>(random());
    view = {memory.data(), width, height, stride, layout};
  }

  [[nodiscard]] std::vector<std::uint8_t> expected() const {
    std::vector<std::uint8_t> bytes;
    const ChannelLayout& layout = view.layout;
    for (int y = 0; y < view.height; ++y) {
      for (int x = 0; x < view.width; ++x) {
        const std::uint8_t* pixel = view.pixels + static_cast<std::size_t>(y) * view.stride +
                                    static_cast<std::size_t>(x * layout.bytesPerPixel);
        for (const int offset : {layout.red, layout.green, layout.blue, layout.alpha}) {
          if (offset != ChannelLayout::none)
            bytes.push_back(pixel[offset]);
        }
      }
    }
    return bytes;
  }
};

constexpr ChannelLayout layouts[] = {{3, 0, 1, 2, ChannelLayout::none},
                                     {3, 2, 1, 0, ChannelLayout::none},
                                     {4, 2, 1, 0, ChannelLayout::none},
                                     {4, 1, 2, 3, ChannelLayout::none},
                                     {4, 0, 1, 2, 3},
                                     {4, 2, 1, 0, 3}};

}  // namespace

TEST(PngEncoder, isReadBackExactlyWhateverTheSizeStrideLayoutFilterAndLevel) {
  std::mt19937 random(1);
  for (int round = 0; round < 150; ++round) {
    const int width = 1 + static_cast<int>(random() % (round % 10 == 0 ? 700 : 40));
    const int height = 1 + static_cast<int>(random() % 30);
    const Picture picture(width, height, random() % 9, layouts[random() % std::size(layouts)], random);
    const PngOptions options{static_cast<int>(random() % 13), static_cast<PngFilter>(round % 5)};
    const auto file = encodePng(picture.view, options);
    ASSERT_TRUE(file);
    const auto decoded = testing_support::DecodedPng::read(file->span());
    ASSERT_TRUE(decoded) << "round " << round;
    EXPECT_EQ(decoded->width, width);
    EXPECT_EQ(decoded->height, height);
    EXPECT_EQ(decoded->channels, picture.view.layout.alpha == ChannelLayout::none ? 3 : 4);
    ASSERT_EQ(decoded->bytes, picture.expected()) << "round " << round;
  }
}

TEST(PngEncoder, givesEqualBytesForEqualPicturesWhateverLiesBetweenTheRows) {
  std::mt19937 random(2);
  const Picture padded(31, 17, 5, layouts[2], random);
  Picture repainted = padded;
  repainted.view.pixels = repainted.memory.data();
  for (std::size_t row = 0; row < 17; ++row) {
    for (std::size_t i = 0; i < 5; ++i)
      repainted.memory[row * padded.view.stride + 31 * 4 + i] ^= 0xff;
    repainted.memory[row * padded.view.stride + 3] ^= 0xff;  // the byte of a pixel that holds no channel
  }
  const auto first = encodePng(padded.view);
  const auto second = encodePng(repainted.view);
  ASSERT_TRUE(first && second);
  EXPECT_TRUE(std::ranges::equal(first->span(), second->span()));
}

TEST(PngEncoder, takesRowsInAnyPortionsButAllOfThem) {
  std::mt19937 random(4);
  const Picture picture(50, 40, 3, layouts[2], random);
  const auto whole = encodePng(picture.view);
  auto encoder = PngEncoder::begin(50, 40, layouts[2]);
  ASSERT_TRUE(whole && encoder);
  for (int row = 0; row < 40;) {
    EXPECT_FALSE(encoder->finish());
    const int count = 1 + static_cast<int>(random() % 9);  // the last portion may be too much
    encoder->addRows(picture.view.pixels + static_cast<std::size_t>(row) * picture.view.stride,
                     picture.view.stride, count);
    row += count;
  }
  const auto dealt = encoder->finish();
  ASSERT_TRUE(dealt);
  EXPECT_TRUE(std::ranges::equal(whole->span(), dealt->span()));
}

TEST(PngEncoder, refusesWhatIsNoPicture) {
  std::mt19937 random(3);
  const Picture picture(8, 8, 0, layouts[2], random);
  const auto refuses = [&](auto spoil) {
    PictureView view = picture.view;
    PngOptions options;
    spoil(view, options);
    return !encodePng(view, options);
  };
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.width = 0; }));
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.height = -1; }));
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.pixels = nullptr; }));
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.stride = 31; }));
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.layout.blue = 4; }));
  EXPECT_TRUE(refuses([](auto& view, auto&) { view.layout.bytesPerPixel = 0; }));
  EXPECT_TRUE(refuses([](auto&, auto& options) { options.level = 13; }));
  EXPECT_FALSE(refuses([](auto&, auto&) {}));
}
