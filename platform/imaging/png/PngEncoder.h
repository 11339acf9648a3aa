#pragma once

#include "platform/imaging/png/Channels.h"
#include "platform/imaging/png/Effort.h"
#include "platform/imaging/png/PngFilters.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace platform {

/// A picture in memory that somebody else owns. Rows run from the top; each starts `stride` bytes after the
/// one above it.
struct PictureView {
  const std::uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::size_t stride = 0;
  ChannelLayout layout;
};

struct PngOptions {
  std::optional<PngFilter> filter = {};  // without one, whichever suits each row
  Effort effort = {};
};

/// A file's bytes. Owned without being zeroed first, which a vector would do.
struct PngFile {
  std::unique_ptr<std::uint8_t[]> bytes;
  std::size_t size = 0;

  [[nodiscard]] std::span<const std::uint8_t> span() const { return {bytes.get(), size}; }
};

/// Makes a PNG file of a picture that lies in memory as a whole: RGB where the layout has no alpha, RGBA
/// otherwise, 8 bits a channel. Compressed for a screenshot that somebody waits for. Equal pictures and
/// filters give equal bytes, however many cores there are.
///
/// Empty if the picture is empty or higher than PNG allows, if a row takes more than 1 GiB, if a channel lies
/// outside of its pixel, if the view has no pixels or a stride too short for a row, if there is no such
/// filter, or if there is not enough memory.
[[nodiscard]] std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options = {});

/// The same of rows as they come, in portions. What has come is worked on meanwhile.
class PngEncoder {
 public:
  /// Empty for the reasons above.
  [[nodiscard]] static std::optional<PngEncoder> begin(int width, int height, const ChannelLayout& layout,
                                                       const PngOptions& options = {});
  PngEncoder(PngEncoder&&) noexcept;
  PngEncoder& operator=(PngEncoder&&) noexcept;
  ~PngEncoder();

  /// The next `count` rows, each `stride` bytes after the one above it. Rows beyond the height are ignored.
  void addRows(const std::uint8_t* pixels, std::size_t stride, int count);

  /// The file, once. Empty if rows are missing or if there is not enough memory.
  [[nodiscard]] std::optional<PngFile> finish();

 private:
  friend std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options);
  struct State;
  explicit PngEncoder(std::unique_ptr<State> begun);
  std::unique_ptr<State> state;
};

}  // namespace platform
