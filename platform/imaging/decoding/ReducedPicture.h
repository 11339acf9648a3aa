#pragma once

#include "platform/imaging/decoding/RowSink.h"

#include <vector>

namespace platform::decoding {

/// Keeps a picture no larger than asked for, each pixel the mean of the area that it covers, and of the
/// source only the row that is being decoded. The means are exact: each source pixel counts by the part of it
/// that lies in the area.
class ReducedPicture : public RowSink {
 public:
  ReducedPicture(int side, const DecodeBounds& most) : RowSink(most), longest(side) {}
  [[nodiscard]] std::optional<int> longestSide() const override { return longest; }
  [[nodiscard]] std::uint8_t* row() override { return source.data(); }
  void finishRow() override;

 private:
  [[nodiscard]] bool prepare() override;
  [[nodiscard]] QImage result() override;

  void addToSums(std::uint64_t weight);
  void writeRow();

  const int longest;
  QImage image;
  std::vector<std::uint8_t> source;
  std::vector<std::uint64_t> rowSums;  // of the source's row, each weighed with the width it covers
  std::vector<std::uint64_t> sums;     // of the image's row that is under way
  std::uint64_t covered = 0;           // of its height, in parts of which a source row has image.height()
  int rowsWritten = 0;
};

}  // namespace platform::decoding
