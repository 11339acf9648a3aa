#include "platform/imaging/codecs/decoding/Decoders.h"

#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageFormat.h"
#include "platform/imaging/codecs/Thumbnail.h"
#include "platform/imaging/codecs/decoding/ReducedPicture.h"
#include "platform/imaging/codecs/decoding/WholePicture.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace platform {
namespace decoding {
namespace {

ByteSource sourceOf(Bytes file) {
  return [rest = file](std::uint8_t* to, std::size_t size) mutable {
    if (size > rest.size())
      return false;
    std::copy_n(rest.data(), size, to);
    rest = rest.subspan(size);
    return true;
  };
}

bool decodeFormat(ImageFormat format, Bytes file, RowSink& sink) {
  switch (format) {
    case ImageFormat::Png:
      return decodePng(sourceOf(file), sink);
    case ImageFormat::Jpeg:
      return decodeJpeg(file, sink);
    case ImageFormat::Tiff:
      return decodeTiff(file, sink);
    case ImageFormat::Gif:
      return decodeGif(file, sink);
    case ImageFormat::Bmp:
      return decodeBmp(file, sink);
    case ImageFormat::WebP:
      return decodeWebP(file, sink);
    case ImageFormat::Heic:
      return decodeHeic(file, sink);
  }
  return false;
}

}  // namespace

std::optional<QImage> decodeInto(const QByteArray& file, RowSink& sink) {
  const Bytes bytes(reinterpret_cast<const std::uint8_t*>(file.constData()),
                    static_cast<std::size_t>(file.size()));
  const auto format = imageFormatOf(bytes);
  if (!format || file.size() > sink.bounds().bytes || !decodeFormat(*format, bytes, sink))
    return std::nullopt;
  return sink.finish();
}

std::optional<QImage> readInto(const QString& path, RowSink& sink) {
  QFile file(path);
  if (!QFileInfo(path).isFile())  // opening a pipe would wait for its other end
    return std::nullopt;
  // Read and not mapped: a mapped file that another program cuts short would end this one.
  if (!file.open(QIODevice::ReadOnly) || file.size() > sink.bounds().bytes)
    return std::nullopt;
  const QByteArray head = file.peek(16);
  const Bytes bytes(reinterpret_cast<const std::uint8_t*>(head.constData()),
                    static_cast<std::size_t>(head.size()));
  if (imageFormatOf(bytes) != ImageFormat::Png)
    return decodeInto(file.readAll(), sink);
  const ByteSource source = [&file](std::uint8_t* to, std::size_t size) {
    const auto count = static_cast<qint64>(size);
    return file.read(reinterpret_cast<char*>(to), count) == count;
  };
  return decodePng(source, sink) ? sink.finish() : std::nullopt;
}

}  // namespace decoding

std::optional<QImage> ImageDecoder::decode(const QByteArray& file, const DecodeBounds& bounds) {
  decoding::WholePicture picture(bounds);
  return decoding::decodeInto(file, picture);
}

std::optional<QImage> ImageDecoder::read(const QString& path, const DecodeBounds& bounds) {
  decoding::WholePicture picture(bounds);
  return decoding::readInto(path, picture);
}

std::optional<QImage> Thumbnail::decode(const QByteArray& file, int longestSide, const DecodeBounds& bounds) {
  if (longestSide < 1)
    return std::nullopt;
  decoding::ReducedPicture picture(longestSide, bounds);
  return decoding::decodeInto(file, picture);
}

std::optional<QImage> Thumbnail::read(const QString& path, int longestSide, const DecodeBounds& bounds) {
  if (longestSide < 1)
    return std::nullopt;
  decoding::ReducedPicture picture(longestSide, bounds);
  return decoding::readInto(path, picture);
}

}  // namespace platform
