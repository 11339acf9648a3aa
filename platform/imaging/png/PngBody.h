#pragma once

#include "platform/imaging/png/PngEncoder.h"

#include <atomic>
#include <thread>
#include <vector>

namespace platform {

/// The chunks of a file that hold the picture: each of a band of rows, made on all cores while later rows may
/// still be coming in. How the picture is parted depends on its size alone, so that the bytes don't depend on
/// the cores.
class PngBody {
 public:
  /// How many bytes the chunks of such a picture take at most, by far; none if that is more than there can
  /// be.
  [[nodiscard]] static std::optional<std::size_t> room(const PictureView& picture);

  /// Writes to `to`, which has the room. Picture and room outlive the body. No row is there yet.
  PngBody(const PictureView& picture, const PngOptions& options, std::uint8_t* to);
  /// Leaves undone what isn't begun.
  ~PngBody();
  PngBody(const PngBody&) = delete;
  PngBody& operator=(const PngBody&) = delete;

  /// From now on, the first `count` rows are there.
  void rowsAreThere(int count);

  /// Once all rows are there: returns the end of the chunks, or null if there was not enough memory.
  [[nodiscard]] std::uint8_t* finish();

 private:
  /// The picture in bands of rows.
  struct Bands {
    explicit Bands(const PictureView& picture);
    [[nodiscard]] int end(int band) const;

    int height;
    std::size_t rowSize;  // packed
    int rows;
    int count;
    std::size_t room;  // a chunk takes less
  };
  struct Chunk {
    std::size_t size = 0;  // 0 if there was not enough memory
    std::uint32_t checksum = 1;
    std::size_t rowsSize = 0;  // of the bytes that the checksum is of
  };
  class Encoder;

  void work();
  [[nodiscard]] bool waitForRows(int count) const;
  void joinHelpers();

  const PictureView picture;
  const PngOptions options;
  const Bands bands;
  std::uint8_t* const begin;
  std::vector<Chunk> chunks;
  // Not dealt out beforehand: a band of a photograph takes ten times as long as one of text.
  std::atomic<int> nextBand = 0;
  std::atomic<int> rowsThere = 0;
  std::vector<std::thread> helpers;
};

}  // namespace platform
