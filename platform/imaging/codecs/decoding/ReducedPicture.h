#pragma once

#include "platform/imaging/codecs/decoding/RowSink.h"

#include <vector>

namespace platform::decoding {

/// Keeps a picture no larger than asked for, each pixel the mean of the area that it covers, and of the
/// source only the row that is being decoded. The means are exact: each source pixel counts by the part of it
/// that lies in the area. Rows are added up first, and what lies side by side once for many of them.
class ReducedPicture : public RowSink {
 public:
  ReducedPicture(int side, const DecodeBounds& most) : RowSink(most), longest(side) {}
  [[nodiscard]] std::optional<int> longestSide() const override { return longest; }
  [[nodiscard]] std::uint8_t* row() override { return source.data(); }
  void finishRow() override;

 private:
  [[nodiscard]] bool prepare() override;
  [[nodiscard]] QImage result() override;

  void addToColumns();
  /// Empties the columns into the sums.
  void addColumns(double weight);
  void addRowSums(double weight);
  void writeRow();

  const int longest;
  QImage image;
  std::vector<std::uint8_t> source;
  std::vector<std::uint16_t> columns;  // sums of source rows that lie as a whole in the image's row
  int rowsInColumns = 0;
  // Whole numbers, and far below the 53 bits up to which these are exact.
  std::vector<double> rowSums;  // of the columns, each weighed with the width it covers
  std::vector<double> sums;     // of the image's row that is under way
  std::int64_t covered = 0;     // of its height, in parts of which a source row has image.height()
  int rowsWritten = 0;
};

}  // namespace platform::decoding
