#pragma once

#include "platform/imaging/png/Effort.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace platform {

/// Where the bytes of a pixel's 8-bit channels lie, counted from the pixel's first byte.
struct ChannelLayout {
  static constexpr int none = -1;

  int bytesPerPixel = 4;
  int red = 0;
  int green = 1;
  int blue = 2;
  int alpha = none;  // straight, not multiplied into the colours; none makes the picture opaque

  bool operator==(const ChannelLayout&) const = default;
};

/// A picture in memory that somebody else owns. Rows run from the top; each starts `stride` bytes after the
/// one above it.
struct PictureView {
  const std::uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::size_t stride = 0;
  ChannelLayout layout;
};

/// What a row's bytes are predicted from, in the numbering of PNG's filter types.
enum class PngFilter : std::uint8_t { None, Sub, Up, Average, Paeth };

/// By default what suits a screenshot that somebody waits for: higher levels save some hundredths of the size
/// of text and windows, and take twice the time for a photograph.
struct PngOptions {
  int level = 1;                         // libdeflate's, 0 (stored) to 12 (smallest)
  std::optional<PngFilter> filter = {};  // without one, whichever suits the rows
  Cores cores = Cores::All;
};

/// A file's bytes. Owned without being zeroed first, which a vector would do.
struct PngFile {
  std::unique_ptr<std::uint8_t[]> bytes;
  std::size_t size = 0;

  [[nodiscard]] std::span<const std::uint8_t> span() const { return {bytes.get(), size}; }
};

/// Makes a PNG file of rows as they come, so that a picture need not lie in memory as a whole: RGB where the
/// layout has no alpha, RGBA otherwise, 8 bits a channel. Equal pictures, levels and filters give equal
/// bytes, however the rows are dealt out and however many cores there are.
class PngEncoder {
 public:
  /// Empty if the picture is empty or wider or higher than PNG allows, if a channel lies outside of its
  /// pixel, if an option is out of range, or if there is not enough memory.
  [[nodiscard]] static std::optional<PngEncoder> begin(int width, int height, const ChannelLayout& layout,
                                                       const PngOptions& options = {});
  PngEncoder(PngEncoder&&) noexcept;
  PngEncoder& operator=(PngEncoder&&) noexcept;
  ~PngEncoder();

  /// The next `count` rows, each `stride` bytes after the one above it. Rows beyond the height are ignored.
  void addRows(const std::uint8_t* pixels, std::size_t stride, int count);

  /// Empty if rows are missing, if there is not enough memory, or if the compressed pixels outgrow one chunk
  /// (2 GiB).
  [[nodiscard]] std::optional<PngFile> finish();

 private:
  struct State;
  explicit PngEncoder(std::unique_ptr<State> begun);
  std::unique_ptr<State> state;
};

/// A picture that lies in memory as a whole. Empty for the reasons above, or if the view has no pixels or a
/// stride too short for a row.
[[nodiscard]] std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options = {});

}  // namespace platform
