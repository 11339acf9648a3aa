#include "platform/imaging/png/DeflateStream.h"

#include <gtest/gtest.h>
#include <libdeflate.h>
#include <random>
#include <vector>

using namespace platform;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Flat, repeating and noisy stretches, for blocks of every kind.
Bytes mixture(std::size_t size, std::mt19937& random) {
  Bytes bytes(size);
  for (std::size_t i = 0, kind = 0; i < size; ++i) {
    if (random() % 5000 == 0)
      kind = random() % 3;
    bytes[i] = kind == 0 ? std::uint8_t{7} : static_cast<std::uint8_t>(random() % (kind == 1 ? 256 : 20));
    if (kind == 2 && i >= 50'000 && random() % 4 != 0)
      bytes[i] = bytes[i - 30'000];
  }
  return bytes;
}

/// With room for what may follow.
Bytes compressed(const Bytes& bytes, int level, std::size_t& size) {
  libdeflate_compressor* compressor = libdeflate_alloc_compressor(level);
  Bytes stream(libdeflate_deflate_compress_bound(compressor, bytes.size()) + roomAfterStream);
  size = libdeflate_deflate_compress(compressor, bytes.data(), bytes.size(), stream.data(),
                                     stream.size() - roomAfterStream);
  libdeflate_free_compressor(compressor);
  return stream;
}

Bytes decompressed(const Bytes& stream, std::size_t size) {
  Bytes bytes(size);
  libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
  const auto result = libdeflate_deflate_decompress(decompressor, stream.data(), stream.size(), bytes.data(),
                                                    bytes.size(), nullptr);
  libdeflate_free_decompressor(decompressor);
  EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
  return bytes;
}

TEST(DeflateStream, isContinuedByOthersWhereverTheyEndAndWhateverTheirBlocks) {
  std::mt19937 random(5);
  Bytes all, joined;
  for (int round = 0; round < 300; ++round) {
    const Bytes part = mixture(random() % (round % 10 == 0 ? 400'000 : 300), random);
    std::size_t size = 0;
    Bytes stream = compressed(part, round % 13, size);
    std::fill(stream.begin() + static_cast<std::ptrdiff_t>(size), stream.end(), std::uint8_t{0xa5});
    const std::size_t opened = round == 299 ? size : letOthersFollow(stream.data(), size);
    ASSERT_GT(opened, 0U) << "round " << round;
    ASSERT_LE(opened, size + roomAfterStream);
    joined.insert(joined.end(), stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(opened));
    all.insert(all.end(), part.begin(), part.end());
  }
  EXPECT_TRUE(decompressed(joined, all.size()) == all);
}

TEST(DeflateStream, isRefusedIfItIsCutOff) {
  std::mt19937 random(6);
  std::size_t size = 0;
  const Bytes stream = compressed(mixture(60'000, random), 6, size);
  for (std::size_t kept = 0; kept < size; kept += 1 + size / 500) {
    Bytes cut(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(kept));
    cut.resize(kept + roomAfterStream);
    EXPECT_EQ(letOthersFollow(cut.data(), kept), 0U) << kept;
  }
}

TEST(DeflateStream, isLookedAtInItsBoundsWhateverItHolds) {
  std::mt19937 random(7);
  std::size_t size = 0;
  const Bytes stream = compressed(mixture(60'000, random), 6, size);
  for (int round = 0; round < 2000; ++round) {
    Bytes spoilt(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(size + roomAfterStream));
    for (int spots = 0; spots < 3; ++spots)
      spoilt[random() % (round % 2 ? size : 90)] = static_cast<std::uint8_t>(random());
    EXPECT_LE(letOthersFollow(spoilt.data(), size), size + roomAfterStream);
  }
}

}  // namespace
