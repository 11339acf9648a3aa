#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/Thumbnail.h"
#include "tests/platform/imaging/codecs/PictureFiles.h"

#include <QColorSpace>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using namespace platform;
using namespace testing_support;

namespace {

/// The mean of the area that each pixel covers, worked out pixel by pixel.
QImage slowlyReduced(const QImage& from, QSize size) {
  QImage to(size, from.format());
  const double cellWidth = double(from.width()) / size.width(),
               cellHeight = double(from.height()) / size.height();
  const auto overlap = [](double start, double length, int pixel) {
    return std::max(0.0, std::min(start + length, pixel + 1.0) - std::max(start, double(pixel)));
  };
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < 4 * size.width(); ++x) {
      double sum = 0;
      const int firstX = static_cast<int>(x / 4 * cellWidth), firstY = static_cast<int>(y * cellHeight);
      for (int fromY = firstY; fromY < std::min<double>(from.height(), firstY + cellHeight + 2); ++fromY)
        for (int fromX = firstX; fromX < std::min<double>(from.width(), firstX + cellWidth + 2); ++fromX)
          sum += from.constScanLine(fromY)[4 * fromX + x % 4] * overlap(x / 4 * cellWidth, cellWidth, fromX) *
                 overlap(y * cellHeight, cellHeight, fromY);
      to.scanLine(y)[x] = static_cast<uchar>(std::lround(sum / (cellWidth * cellHeight)));
    }
  }
  return to;
}

}  // namespace

TEST(Thumbnail, isTheMeanOfWhatEachPixelCovers) {
  std::mt19937 random(5);
  for (int round = 0; round < 25; ++round) {
    const bool isTall = round == 0;  // hundreds of rows make one
    const QSize size(1 + static_cast<int>(random() % 70), isTall ? 999 : 1 + static_cast<int>(random() % 70));
    const int longest = isTall ? 2 : 1 + static_cast<int>(random() % 40);
    const QImage picture = sample(size, round % 2 == 0 ? SampleKind::HasAlpha : SampleKind::Opaque,
                                  static_cast<unsigned>(round));
    const auto file = ImageEncoder::encode(picture, ImageFileType::Png);
    const auto thumbnail = Thumbnail::decode(file.value(), longest);
    ASSERT_TRUE(thumbnail);
    EXPECT_LE(std::max(thumbnail->width(), thumbnail->height()), longest);
    EXPECT_LE(largestDifference(*thumbnail, slowlyReduced(picture, thumbnail->size())), 1)
        << size.width() << 'x' << size.height() << " to " << longest;
  }
}

TEST(Thumbnail, ofAScaledJpegAndOfAProfileIsThatOfTheWholePicture) {
  // Nothing in it is as fine as the steps in which the codec scales. Where the profile's colours leave sRGB,
  // it matters a little whether they are converted before the mean or after.
  const QImage picture = sample({101, 71}, SampleKind::Opaque)
                             .scaled(1001, 703, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const QByteArray profile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
  QByteArray jpeg = ImageEncoder::encode(picture, ImageFileType::Jpeg).value();
  const auto length = profile.size() + 16;
  jpeg.insert(2, QByteArray("\xff\xe2") + static_cast<char>(length >> 8) + static_cast<char>(length) +
                     QByteArray("ICC_PROFILE\0\1\1", 14) + profile);
  for (const int longest : {20, 320, 600}) {
    const auto thumbnail = Thumbnail::decode(jpeg, longest);
    ASSERT_TRUE(thumbnail);
    EXPECT_EQ(std::max(thumbnail->width(), thumbnail->height()), longest);
    const QImage reference = slowlyReduced(ImageDecoder::decode(jpeg).value(), thumbnail->size());
    EXPECT_LT(meanDifference(*thumbnail, reference), 6) << longest;
  }
}

TEST(Thumbnail, isMadeOnManyThreadsAtOnce) {
  for (const char* format : {"png", "jpeg", "tiff", "gif", "bmp", "webp", "heic"}) {
    const QByteArray file = makeFile(sample({161, 143}, SampleKind::Opaque), {}, QString::fromLatin1(format));
    const auto expected = Thumbnail::decode(file, 50);
    ASSERT_TRUE(expected) << format;
    std::vector<std::optional<QImage>> made(8);
    std::vector<std::thread> threads;
    for (auto& result : made)
      threads.emplace_back([&] { result = Thumbnail::decode(file, 50); });
    for (auto& thread : threads)
      thread.join();
    for (const auto& result : made)
      EXPECT_EQ(result, expected) << format;
  }
}
