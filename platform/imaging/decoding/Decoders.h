#pragma once

#include "platform/imaging/decoding/RowSink.h"

namespace platform::decoding {

/// Finds the file's format and pours its picture into the sink; the picture is then what the sink's `finish`
/// gives.
[[nodiscard]] std::optional<QImage> decodeInto(const QByteArray& file, RowSink& sink);
/// The file's bytes; absent where it can't be read or is larger than the bounds allow.
[[nodiscard]] std::optional<QByteArray> readFile(const QString& path, const DecodeBounds& bounds);

/// One for each format. False if the file is damaged, cut short or over the bounds; the sink may then have
/// got a part of its rows.
[[nodiscard]] bool decodePng(Bytes file, RowSink& sink);
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
