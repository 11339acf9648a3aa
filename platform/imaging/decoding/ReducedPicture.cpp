#include "platform/imaging/decoding/ReducedPicture.h"

#include "platform/imaging/Premultiply.h"
#include "platform/imaging/decoding/WholePicture.h"

#include <algorithm>
#include <array>

namespace platform::decoding {
namespace {

void add(std::uint64_t* cell, const std::uint8_t* pixel, std::uint64_t weight) {
  for (int channel = 0; channel < 4; ++channel)
    cell[channel] += pixel[channel] * weight;
}

/// A row of `from` pixels becomes `to` sums: a pixel is `to` units wide, a cell `from`.
void sumAcross(const std::uint8_t* pixel, std::size_t from, std::uint64_t* cell, std::size_t to) {
  std::size_t before = 0;  // how much of the pixel the cell to the left has
  for (std::uint64_t* const end = cell + 4 * to; cell != end; cell += 4) {
    std::size_t room = from;
    if (before > 0) {
      add(cell, pixel, to - before);
      room -= to - before;
      pixel += 4;
    }
    // Those that lie in the cell as a whole are most of them.
    std::array<std::uint64_t, 4> whole{};
    for (std::size_t count = room / to; count > 0; --count, pixel += 4)
      for (std::size_t channel = 0; channel < 4; ++channel)
        whole[channel] += pixel[channel];
    for (std::size_t channel = 0; channel < 4; ++channel)
      cell[channel] += whole[channel] * to;
    before = room % to;
    if (before > 0)
      add(cell, pixel, before);
  }
}

}  // namespace

bool ReducedPicture::prepare() {
  const std::int64_t side = std::max(picture.width, picture.height);
  const auto reduced = [&](std::int64_t length) {
    return side <= longest ? length : std::max<std::int64_t>(1, (length * longest + side / 2) / side);
  };
  image = QImage(static_cast<int>(reduced(picture.width)), static_cast<int>(reduced(picture.height)),
                 QImage::Format_RGBA8888_Premultiplied);
  source.resize(static_cast<std::size_t>(4 * picture.width));
  rowSums.resize(static_cast<std::size_t>(4 * image.width()));
  sums.assign(rowSums.size(), 0);
  covered = 0;
  rowsWritten = 0;
  return !image.isNull();
}

void ReducedPicture::finishRow() {
  settle(source.data(), static_cast<int>(picture.width), picture.alpha, std::nullopt);
  std::fill(rowSums.begin(), rowSums.end(), 0);
  sumAcross(source.data(), static_cast<std::size_t>(picture.width), rowSums.data(),
            static_cast<std::size_t>(image.width()));
  const auto rowHeight = static_cast<std::uint64_t>(image.height());
  const auto cellHeight = static_cast<std::uint64_t>(picture.height);
  const std::uint64_t here = std::min(rowHeight, cellHeight - covered);
  addToSums(here);
  covered += here;
  if (covered == cellHeight) {
    writeRow();
    covered = rowHeight - here;
    if (covered > 0)
      addToSums(covered);
  }
  ++rowsDone;
}

void ReducedPicture::addToSums(std::uint64_t weight) {
  for (std::size_t i = 0; i < sums.size(); ++i)
    sums[i] += rowSums[i] * weight;
}

void ReducedPicture::writeRow() {
  const auto area = static_cast<std::uint64_t>(picture.width) * static_cast<std::uint64_t>(picture.height);
  std::uint8_t* to = image.scanLine(rowsWritten++);
  for (std::uint64_t& sum : sums) {
    *to++ = static_cast<std::uint8_t>((sum + area / 2) / area);
    sum = 0;
  }
}

QImage ReducedPicture::result() {
  // The few pixels that are left are converted instead of the many that came.
  if (const auto conversion = ColorConversion::fromProfile(picture.profile)) {
    for (int y = 0; y < image.height(); ++y)
      settle(image.scanLine(y), image.width(),
             picture.alpha == Alpha::None ? Alpha::None : Alpha::Premultiplied, conversion);
  }
  return std::move(image);
}

}  // namespace platform::decoding
