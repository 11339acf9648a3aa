#include "platform/imaging/codecs/decoding/ReducedPicture.h"

#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/decoding/WholePicture.h"
#include "platform/imaging/png/Vectorised.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace platform::decoding {
namespace {

constexpr int mostRowsInColumns = 257;  // of 255 each

void addRow(const std::uint8_t* row, std::size_t count, std::uint16_t* columns) {
  for (std::size_t i = 0; i < count; ++i)
    columns[i] = static_cast<std::uint16_t>(columns[i] + row[i]);
}

void addWeighed(const double* from, double weight, std::size_t count, double* to) {
  for (std::size_t i = 0; i < count; ++i)
    to[i] += from[i] * weight;
}

void writeMeans(const double* sums, std::size_t count, std::int64_t area, std::uint8_t* to) {
  const auto all = static_cast<double>(area);
  const auto half = std::floor(all / 2);
  for (std::size_t i = 0; i < count; ++i)
    to[i] = static_cast<std::uint8_t>(static_cast<int>((sums[i] + half) / all));
}

void add(double* cell, const std::uint16_t* pixel, double weight) {
  for (int channel = 0; channel < 4; ++channel)
    cell[channel] += pixel[channel] * weight;
}

/// A row of `from` pixels becomes `to` sums: a pixel is `to` units wide, a cell `from`.
void sumAcross(const std::uint16_t* pixel, std::size_t from, double* cell, std::size_t to) {
  std::size_t before = 0;  // how much of the pixel the cell to the left has
  for (double* const end = cell + 4 * to; cell != end; cell += 4) {
    std::array<double, 4> sum{};
    std::size_t room = from;
    if (before > 0) {
      add(sum.data(), pixel, static_cast<double>(to - before));
      room -= to - before;
      pixel += 4;
    }
    // Those that lie in the cell as a whole are most of them.
    std::array<std::uint64_t, 4> whole{};
    for (; room >= to; room -= to, pixel += 4)
      for (std::size_t channel = 0; channel < 4; ++channel)
        whole[channel] += pixel[channel];
    for (std::size_t channel = 0; channel < 4; ++channel)
      sum[channel] += static_cast<double>(whole[channel]) * static_cast<double>(to);
    before = room;
    if (before > 0)
      add(sum.data(), pixel, static_cast<double>(before));
    std::copy(sum.begin(), sum.end(), cell);
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
  source.resize(4 * static_cast<std::size_t>(picture.width));
  columns.assign(source.size(), 0);
  rowsInColumns = 0;
  rowSums.resize(4 * static_cast<std::size_t>(image.width()));
  sums.assign(rowSums.size(), 0);
  covered = 0;
  rowsWritten = 0;
  return !image.isNull();
}

void ReducedPicture::finishRow() {
  settle(source.data(), static_cast<int>(picture.width), picture.alpha, std::nullopt);
  const std::int64_t rowHeight = image.height();
  const std::int64_t room = picture.height - covered;
  if (rowHeight <= room) {
    addToColumns();
    covered += rowHeight;
    if (rowHeight == room || rowsInColumns == mostRowsInColumns)
      addColumns(static_cast<double>(rowHeight));
    if (rowHeight == room)
      writeRow();
  } else {
    addColumns(static_cast<double>(rowHeight));
    addToColumns();
    addColumns(static_cast<double>(room));
    writeRow();
    covered = rowHeight - room;
    addRowSums(static_cast<double>(covered));
  }
  ++rowsDone;
}

void ReducedPicture::addToColumns() {
  vectorised<addRow>(Instructions::Widest, source.data(), source.size(), columns.data());
  ++rowsInColumns;
}

void ReducedPicture::addColumns(double weight) {
  if (rowsInColumns == 0)
    return;
  vectorised<sumAcross>(Instructions::Widest, columns.data(), static_cast<std::size_t>(picture.width),
                        rowSums.data(), static_cast<std::size_t>(image.width()));
  std::fill(columns.begin(), columns.end(), std::uint16_t{0});
  rowsInColumns = 0;
  addRowSums(weight);
}

void ReducedPicture::addRowSums(double weight) {
  vectorised<addWeighed>(Instructions::Widest, rowSums.data(), weight, sums.size(), sums.data());
}

void ReducedPicture::writeRow() {
  vectorised<writeMeans>(Instructions::Widest, sums.data(), sums.size(),
                         std::int64_t{picture.width} * picture.height, image.scanLine(rowsWritten++));
  std::fill(sums.begin(), sums.end(), 0);
  covered = 0;
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
