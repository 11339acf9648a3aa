#include "platform/imaging/decoding/ReducedPicture.h"

#include "platform/imaging/Premultiply.h"
#include "platform/imaging/decoding/WholePicture.h"

#include <algorithm>

namespace platform::decoding {
namespace {

/// A row of `from` pixels becomes `to` wide sums: a source pixel is `to` units wide, a cell `from`.
void sumAcross(const std::uint8_t* pixel, std::size_t from, std::uint64_t* cell, std::size_t to) {
  std::uint64_t room = from;  // what is left of the cell
  for (const std::uint8_t* const end = pixel + 4 * from; pixel != end; pixel += 4) {
    const std::uint64_t here = std::min<std::uint64_t>(to, room);
    const std::uint64_t next = to - here;
    for (int channel = 0; channel < 4; ++channel)
      cell[channel] += pixel[channel] * here;
    room -= here;
    if (room > 0)
      continue;
    cell += 4;
    room = from - next;
    if (next > 0)
      for (int channel = 0; channel < 4; ++channel)
        cell[channel] += pixel[channel] * next;
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
