#include "platform/imaging/png/PngEncoder.h"

#include "platform/imaging/png/LargeMemory.h"
#include "platform/imaging/png/PngBody.h"
#include "platform/imaging/png/PngChunks.h"

#include <algorithm>
#include <array>
#include <new>

namespace platform {
namespace {

using Byte = std::uint8_t;

constexpr std::array<Byte, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t headerSize = 13;
constexpr std::size_t aroundBody = signature.size() + 2 * chunkFrame + headerSize;
constexpr std::size_t longestRow = std::size_t{1} << 30;

Byte* writeHeader(Byte* to, const PictureView& picture) {
  Byte* chunk = std::ranges::copy(signature, to).out;
  Byte* data = chunk + 8;
  putNumber(data, static_cast<std::size_t>(picture.width));
  putNumber(data + 4, static_cast<std::size_t>(picture.height));
  constexpr Byte bitsPerChannel = 8;
  constexpr Byte colours = 2, coloursWithAlpha = 6;
  data[8] = bitsPerChannel;
  data[9] = picture.layout.alpha == ChannelLayout::none ? colours : coloursWithAlpha;
  data[10] = data[11] = data[12] = 0;  // deflate, the five filters, not interlaced
  return closeChunk(chunk, "IHDR", headerSize);
}

std::size_t rowSizeOf(int width, const ChannelLayout& layout) {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(layout.channels());
}

bool isSound(int width, int height, const ChannelLayout& layout, const PngOptions& options) {
  const auto inPixel = [&](int offset) { return offset >= 0 && offset < layout.bytesPerPixel; };
  return width > 0 && height > 0 && inPixel(layout.red) && inPixel(layout.green) && inPixel(layout.blue) &&
         (layout.alpha == ChannelLayout::none || inPixel(layout.alpha)) &&
         rowSizeOf(width, layout) < longestRow &&
         options.filter.value_or(PngFilter::None) <= PngFilter::Paeth;
}

}  // namespace

struct PngEncoder::State {
  /// The rows needn't be there yet, and are added to `own`, if that isn't null.
  State(const PictureView& view, const PngOptions& wanted, LargeMemory<Byte> own)
      : ownRows(std::move(own)), picture(view), effort(wanted.effort) {
    const auto room = PngBody::room(picture);
    // Without an initial value, which takes longer than some pictures.
    file.bytes.reset(room ? new (std::nothrow) Byte[aroundBody + *room] : nullptr);
    if (file.bytes)
      body.emplace(picture, wanted, writeHeader(file.bytes.get(), picture));
  }

  [[nodiscard]] std::optional<PngFile> finish() {
    Byte* end = body->finish();
    if (!end)
      return std::nullopt;
    end = closeChunk(end, "IEND", 0);
    file.size = static_cast<std::size_t>(end - file.bytes.get());
    return std::move(file);
  }

  const LargeMemory<Byte> ownRows;
  const PictureView picture;
  const Effort effort;
  ChannelLayout added;
  int rowsDone = 0;
  PngFile file;
  std::optional<PngBody> body;  // the last, for it uses the others
};

std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options) {
  if (!isSound(picture.width, picture.height, picture.layout, options) || !picture.pixels ||
      picture.stride / static_cast<std::size_t>(picture.layout.bytesPerPixel) <
          static_cast<std::size_t>(picture.width))
    return std::nullopt;
  PngEncoder::State state(picture, options, nullptr);
  if (!state.body)
    return std::nullopt;
  state.body->rowsAreThere(picture.height);
  return state.finish();
}

PngEncoder::PngEncoder(std::unique_ptr<State> begun) : state(std::move(begun)) {
}
PngEncoder::PngEncoder(PngEncoder&&) noexcept = default;
PngEncoder& PngEncoder::operator=(PngEncoder&&) noexcept = default;
PngEncoder::~PngEncoder() = default;

std::optional<PngEncoder> PngEncoder::begin(int width, int height, const ChannelLayout& layout,
                                            const PngOptions& options) {
  if (!isSound(width, height, layout, options))
    return std::nullopt;
  const std::size_t rowSize = rowSizeOf(width, layout);
  auto rows = allocateLarge<Byte>(rowSize * static_cast<std::size_t>(height));
  if (!rows)
    return std::nullopt;
  const PictureView picture{rows.get(), width, height, rowSize,
                            ChannelLayout::packed(layout.alpha != ChannelLayout::none)};
  auto state = std::make_unique<State>(picture, options, std::move(rows));
  if (!state->body)
    return std::nullopt;
  state->added = layout;
  return PngEncoder(std::move(state));
}

void PngEncoder::addRows(const std::uint8_t* pixels, std::size_t stride, int count) {
  const PictureView& picture = state->picture;
  for (; count > 0 && state->rowsDone < picture.height; --count, pixels += stride) {
    const auto row = static_cast<std::size_t>(state->rowsDone++);
    packChannels(pixels, state->added, state->ownRows.get() + row * picture.stride, picture.stride,
                 state->effort.instructions);
  }
  state->body->rowsAreThere(state->rowsDone);
}

std::optional<PngFile> PngEncoder::finish() {
  return state->rowsDone == state->picture.height ? state->finish() : std::nullopt;
}

}  // namespace platform
