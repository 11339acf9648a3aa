#include "platform/imaging/codecs/decoding/Decoders.h"

#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageFormat.h"
#include "platform/imaging/codecs/Thumbnail.h"
#include "platform/imaging/codecs/decoding/ReducedPicture.h"
#include "platform/imaging/codecs/decoding/WholePicture.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

/// The toolkit opens files by their names as text only.
bool openPlainFile(const QByteArray& path, QFile& file) {
  constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;  // opening a pipe would wait for its other end
  const int descriptor = open(path.constData(), flags);
  struct stat status = {};
  if (descriptor < 0)
    return false;
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
      file.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle))
    return true;
  close(descriptor);
  return false;
}

std::optional<QImage> readInto(const QByteArray& path, RowSink& sink) {
  QFile file;
  if (!openPlainFile(path, file) || file.size() > sink.bounds().bytes)
    return std::nullopt;
  // Read and not mapped: a mapped file that another program cuts short would end this one.
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

std::optional<QImage> ImageDecoder::read(const QByteArray& path, const DecodeBounds& bounds) {
  decoding::WholePicture picture(bounds);
  return decoding::readInto(path, picture);
}

std::optional<QImage> Thumbnail::decode(const QByteArray& file, int longestSide, const DecodeBounds& bounds) {
  if (longestSide < 1)
    return std::nullopt;
  decoding::ReducedPicture picture(longestSide, bounds);
  return decoding::decodeInto(file, picture);
}

std::optional<QImage> Thumbnail::read(const QByteArray& path, int longestSide, const DecodeBounds& bounds) {
  if (longestSide < 1)
    return std::nullopt;
  decoding::ReducedPicture picture(longestSide, bounds);
  return decoding::readInto(path, picture);
}

}  // namespace platform
