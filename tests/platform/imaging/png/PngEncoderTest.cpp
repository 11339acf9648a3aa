#include "platform/imaging/png/PngEncoder.h"

#include <QBuffer>
#include <QImage>

#include <cmath>
#include <functional>
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

  [[nodiscard]] QImage expected() const {
    const ChannelLayout& layout = view.layout;
    const bool hasAlpha = layout.alpha != ChannelLayout::none;
    QImage image(view.width, view.height, hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < view.height; ++y) {
      const std::uint8_t* pixel = view.pixels + static_cast<std::size_t>(y) * view.stride;
      for (int x = 0; x < view.width; ++x, pixel += layout.bytesPerPixel)
        image.setPixel(x, y,
                       qRgba(pixel[layout.red], pixel[layout.green], pixel[layout.blue],
                             hasAlpha ? pixel[layout.alpha] : 255));
    }
    return image;
  }
};

constexpr ChannelLayout layouts[] = {{3, 0, 1, 2, ChannelLayout::none},
                                     {3, 2, 1, 0, ChannelLayout::none},
                                     {4, 2, 1, 0, ChannelLayout::none},
                                     {4, 1, 2, 3, ChannelLayout::none},
                                     {4, 0, 1, 2, 3},
                                     {4, 2, 1, 0, 3}};

TEST(PngEncoder, isReadBackExactlyWhateverTheSizeStrideLayoutAndFilter) {
  std::mt19937 random(1);
  for (int round = 0; round < 150; ++round) {
    const int width = 1 + static_cast<int>(random() % (round % 10 == 0 ? 700 : 40));
    const int height = 1 + static_cast<int>(random() % 30);
    const Picture picture(width, height, random() % 9, layouts[random() % std::size(layouts)], random);
    PngOptions options;
    if (round % 6 < 5)
      options.filter = static_cast<PngFilter>(round % 6);
    const auto file = encodePng(picture.view, options);
    ASSERT_TRUE(file);
    QImage decoded;
    ASSERT_TRUE(decoded.loadFromData(file->span().data(), static_cast<int>(file->span().size()), "PNG"));
    EXPECT_EQ(decoded, picture.expected()) << "round " << round;
  }
}

TEST(PngEncoder, givesTheSameBytesWithLessOfTheMachine) {
  std::mt19937 random(2);
  const Picture picture(1500, 1100, 0, layouts[2], random);  // of several bands
  const auto alone = encodePng(picture.view, {{}, {Cores::One, Instructions::Plain}});
  const auto together = encodePng(picture.view);
  auto encoder = PngEncoder::begin(1500, 1100, layouts[2]);
  ASSERT_TRUE(alone && together && encoder);
  EXPECT_TRUE(std::ranges::equal(alone->span(), together->span()));
  for (std::size_t row = 0; row < 1100; row += 100)
    encoder->addRows(picture.view.pixels + row * picture.view.stride, picture.view.stride, 100);
  const auto meanwhile = encoder->finish();
  ASSERT_TRUE(meanwhile);
  EXPECT_TRUE(std::ranges::equal(alone->span(), meanwhile->span()));
  QImage decoded;
  ASSERT_TRUE(decoded.loadFromData(alone->span().data(), static_cast<int>(alone->span().size()), "PNG"));
  EXPECT_EQ(decoded, picture.expected());
}

TEST(PngEncoder, filtersPartsOfAPictureAsSuitsThem) {
  // Noise on a slope, as in a photograph, above marks as hard as text's.
  std::mt19937 random(8);
  Picture picture(600, 400, 0, layouts[0], random);
  std::uint8_t* byte = picture.memory.data();
  for (int y = 0; y < 400; ++y)
    for (int x = 0; x < 600; ++x) {
      const int mark = random() % 5 == 0 ? 30 : 250;
      for (int channel = 0; channel < 3; ++channel)
        *byte++ = static_cast<std::uint8_t>(y < 200 ? (x + y) / 5 + static_cast<int>(random() % 9) : mark);
    }
  const auto chosen = encodePng(picture.view);
  ASSERT_TRUE(chosen);
  QImage decoded;
  ASSERT_TRUE(decoded.loadFromData(chosen->span().data(), static_cast<int>(chosen->span().size()), "PNG"));
  EXPECT_EQ(decoded, picture.expected());
  for (const PngFilter filter : {PngFilter::None, PngFilter::Up, PngFilter::Average})
    EXPECT_LT(chosen->size, encodePng(picture.view, {filter})->size) << int(filter);
}

std::size_t sizeByToolkit(const QImage& picture) {
  QBuffer buffer;
  EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "PNG"));
  return static_cast<std::size_t>(buffer.size());
}

TEST(PngEncoder, keepsPhotographsAsSmallAsTheToolkitDoesWithAndWithoutAlpha) {
  std::mt19937 random(6);
  std::normal_distribution<double> noise(0, 2);
  for (const ChannelLayout& layout : {layouts[0], layouts[4]}) {
    const int bytes = layout.bytesPerPixel;
    Picture picture(1200, 700, 0, layout, random);
    for (int y = 0; y < 700; ++y)
      for (int x = 0; x < 1200; ++x) {
        const int i = (y * 1200 + x) * bytes;
        for (int channel = 0; channel < 3; ++channel)
          picture.memory[static_cast<std::size_t>(i + channel)] = static_cast<std::uint8_t>(
              120 + 40 * std::sin(x / 90.0 + channel) + 50 * std::cos(y / 70.0) + noise(random));
        if (bytes == 4)
          picture.memory[static_cast<std::size_t>(i + 3)] = y % 16 == 0 ? 200 : 255;
      }
    const auto file = encodePng(picture.view);
    ASSERT_TRUE(file);
    QImage decoded;
    ASSERT_TRUE(decoded.loadFromData(file->span().data(), static_cast<int>(file->span().size()), "PNG"));
    EXPECT_EQ(decoded, picture.expected());
    EXPECT_LT(file->size, sizeByToolkit(picture.expected()));
  }
}

TEST(PngEncoder, keepsSlopesOfColourAsSmallAsTheToolkitDoes) {
  const auto level = [](double part) { return static_cast<int>(part * 255); };
  for (const auto& slope :
       {std::function([](double x, double) { return x; }),
        std::function([](double x, double y) { return (x + y) / 2; }),
        std::function([](double x, double y) { return 1 - std::min(1.0, std::hypot(x, y)); })}) {
    QImage picture(1200, 800, QImage::Format_RGB888);
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const double part = slope(x / 1200.0, y / 800.0);
        picture.setPixel(x, y, qRgb(level(0.2 + 0.7 * part), level(part / 2), level(1 - part)));
      }
    const auto file = encodePng({picture.constBits(),
                                 1200,
                                 800,
                                 static_cast<std::size_t>(picture.bytesPerLine()),
                                 {3, 0, 1, 2, ChannelLayout::none}});
    ASSERT_TRUE(file);
    EXPECT_EQ(
        QImage::fromData(file->bytes.get(), static_cast<int>(file->size)).convertToFormat(picture.format()),
        picture);
    EXPECT_LT(static_cast<double>(file->size), 1.2 * static_cast<double>(sizeByToolkit(picture)));
  }
}

TEST(PngEncoder, takesRowsInAnyPortionsAndNothingOfWhatLiesBetweenThem) {
  std::mt19937 random(4);
  const Picture picture(50, 40, 3, layouts[2], random);
  std::vector<std::uint8_t> repainted = picture.memory;
  for (std::size_t row = 0; row < 40; ++row)
    for (const std::size_t unused : {3, 200, 202})  // the byte of a pixel that holds no channel, and the gap
      repainted[row * picture.view.stride + unused] ^= 0xff;
  const auto whole = encodePng(picture.view);
  auto encoder = PngEncoder::begin(50, 40, layouts[2]);
  ASSERT_TRUE(whole && encoder);
  for (int row = 0; row < 40;) {
    EXPECT_FALSE(encoder->finish());
    const int count = 1 + static_cast<int>(random() % 9);  // the last portion may be too much
    encoder->addRows(repainted.data() + static_cast<std::size_t>(row) * picture.view.stride,
                     picture.view.stride, count);
    row += count;
  }
  const auto dealt = encoder->finish();
  ASSERT_TRUE(dealt);
  EXPECT_TRUE(std::ranges::equal(whole->span(), dealt->span()));
}

TEST(PngEncoder, canBeLeftBeforeAllRowsHaveCome) {
  std::mt19937 random(5);
  const Picture picture(1500, 600, 0, layouts[2], random);
  auto encoder = PngEncoder::begin(1500, 1100, layouts[2]);
  ASSERT_TRUE(encoder);
  encoder->addRows(picture.view.pixels, picture.view.stride, 600);
  EXPECT_FALSE(encoder->finish());
}

TEST(PngEncoder, refusesWhatIsNoPicture) {
  std::mt19937 random(3);
  const Picture picture(8, 8, 0, layouts[2], random);
  EXPECT_TRUE(encodePng(picture.view));
  EXPECT_FALSE(encodePng(picture.view, {PngFilter(5)}));
  for (void (*spoil)(PictureView&) :
       {+[](PictureView& view) { view.width = 0; }, +[](PictureView& view) { view.height = -1; },
        +[](PictureView& view) { view.pixels = nullptr; }, +[](PictureView& view) { view.stride = 31; },
        +[](PictureView& view) { view.layout.blue = 4; },
        +[](PictureView& view) { view.layout.bytesPerPixel = 0; }}) {
    PictureView view = picture.view;
    spoil(view);
    EXPECT_FALSE(encodePng(view));
  }
}

}  // namespace
