#pragma once

#include "platform/imaging/codecs/decoding/ColorConversion.h"
#include "platform/imaging/codecs/decoding/RowSink.h"

namespace platform::decoding {

/// Keeps every pixel. Codecs write straight into the picture's memory.
class WholePicture : public RowSink {
 public:
  using RowSink::RowSink;
  [[nodiscard]] std::uint8_t* row() override;
  void finishRow() override;

 private:
  [[nodiscard]] bool prepare() override;
  [[nodiscard]] QImage result() override { return std::move(image); }

  QImage image;
  std::uint8_t* pixels = nullptr;
  std::optional<ColorConversion> conversion;
};

/// The pixels of a row as the program wants them: in sRGB, premultiplied.
void settle(std::uint8_t* row, int width, Alpha alpha, const std::optional<ColorConversion>& conversion);

}  // namespace platform::decoding
