#pragma once

#include "platform/imaging/codecs/decoding/RowSink.h"

#include <functional>

namespace platform::decoding {

/// Finds the file's format and pours its picture into the sink; the picture is then what the sink's `finish`
/// gives.
[[nodiscard]] std::optional<QImage> decodeInto(const QByteArray& file, RowSink& sink);
/// The same of a file on the disk, of which no more is held in memory than its format needs.
[[nodiscard]] std::optional<QImage> readInto(const QString& path, RowSink& sink);

/// Gives the next `size` bytes of a file; false if it has fewer.
using ByteSource = std::function<bool(std::uint8_t* to, std::size_t size)>;

/// One for each format. False if the file is damaged, cut short or over the bounds; the sink may then have
/// got a part of its rows.
[[nodiscard]] bool decodePng(const ByteSource& file, RowSink& sink);
[[nodiscard]] bool decodeJpeg(Bytes file, RowSink& sink);
[[nodiscard]] bool decodeTiff(Bytes file, RowSink& sink);
[[nodiscard]] bool decodeGif(Bytes file, RowSink& sink);
[[nodiscard]] bool decodeBmp(Bytes file, RowSink& sink);
[[nodiscard]] bool decodeWebP(Bytes file, RowSink& sink);
[[nodiscard]] bool decodeHeic(Bytes file, RowSink& sink);

/// 1 to 8 by EXIF's numbering, of a block that starts with a TIFF header ("Exif" and two zeros may go before
/// it); 1 where it says nothing sensible.
[[nodiscard]] int exifOrientation(Bytes exif);

}  // namespace platform::decoding
