#pragma once

#include "platform/imaging/codecs/DecodeBounds.h"

#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <optional>
#include <span>

namespace platform::decoding {

using Bytes = std::span<const std::uint8_t>;

enum class Alpha { None, Straight, Premultiplied };

/// What a file says of its picture before the first row.
struct PictureHeader {
  std::int64_t width = 0;
  std::int64_t height = 0;
  Alpha alpha = Alpha::None;
  int orientation = 1;  // EXIF's numbering, 1 to 8
  QByteArray profile;   // ICC; empty means sRGB
};

/// Where a decoder pours a picture, row by row from the top, as the file has it: neither turned upright nor
/// converted to sRGB, both of which are done here. Rows are RGBA, 8 bits a channel.
class RowSink {
 public:
  explicit RowSink(const DecodeBounds& most) : limits(most) {}
  virtual ~RowSink() = default;
  RowSink(const RowSink&) = delete;
  RowSink& operator=(const RowSink&) = delete;

  /// What the codecs must keep to by themselves.
  [[nodiscard]] const DecodeBounds& bounds() const { return limits; }
  /// Whether a picture of that size isn't empty and keeps to the bounds. Codecs that take memory for it
  /// before they can `begin` ask first.
  [[nodiscard]] bool allows(std::int64_t width, std::int64_t height) const;
  /// The longest side that is enough; a codec that can decode to a smaller size may give any size from there
  /// up. Absent if only the whole picture will do.
  [[nodiscard]] virtual std::optional<int> longestSide() const { return std::nullopt; }
  /// False if the picture is empty or over the bounds, or if there is no memory for it.
  [[nodiscard]] bool begin(const PictureHeader& header);
  /// Room for the next of the header's rows.
  [[nodiscard]] virtual std::uint8_t* row() = 0;
  virtual void finishRow() = 0;
  /// The picture; absent if any row is missing.
  [[nodiscard]] std::optional<QImage> finish();

 protected:
  PictureHeader picture;
  int rowsDone = 0;

 private:
  [[nodiscard]] virtual bool prepare() = 0;
  [[nodiscard]] virtual QImage result() = 0;

  const DecodeBounds limits;
};

}  // namespace platform::decoding
