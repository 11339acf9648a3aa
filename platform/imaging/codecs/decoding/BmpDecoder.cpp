#include "platform/imaging/codecs/decoding/Decoders.h"

#include <QIODevice>
#include <QImageReader>

#include <algorithm>
#include <cstring>

namespace platform::decoding {
namespace {

/// Remembers whether more was asked for than there is: the toolkit's reader leaves missing rows black.
class Source : public QIODevice {
 public:
  explicit Source(Bytes bytes) : file(bytes) { open(ReadOnly | Unbuffered); }
  [[nodiscard]] bool ranOut() const { return missed; }
  [[nodiscard]] qint64 size() const override { return static_cast<qint64>(file.size()); }

 private:
  qint64 readData(char* to, qint64 most) override {
    const qint64 count = std::min(most, size() - pos());
    missed = missed || count < most;
    if (count > 0)
      std::memcpy(to, file.data() + pos(), static_cast<std::size_t>(count));
    return std::max<qint64>(count, 0);
  }
  qint64 writeData(const char*, qint64) override { return -1; }

  const Bytes file;
  bool missed = false;
};

std::int64_t numberAt(Bytes file, std::size_t offset, std::size_t size) {
  std::int64_t number = 0;
  for (std::size_t i = size; i > 0; --i)
    number = number << 8 | file[offset + i - 1];
  return number;
}

/// Whether the file is long enough for that many pixels: the toolkit fills its picture before it looks.
bool canHold(Bytes file, std::int64_t pixels) {
  constexpr std::size_t smallestFile = 34;
  constexpr std::int64_t oldHeaderSize = 12;
  if (file.size() < smallestFile)
    return false;
  const bool isOld = numberAt(file, 14, 4) == oldHeaderSize;
  const std::int64_t bitsPerPixel = numberAt(file, isOld ? 24 : 28, 2);
  const std::int64_t compression = isOld ? 0 : numberAt(file, 30, 4);
  const bool asRuns = compression == 1 || compression == 2;
  constexpr std::int64_t longestRun = 255;  // in two bytes
  const auto size = static_cast<std::int64_t>(file.size());
  return asRuns ? pixels <= size / 2 * longestRun
                : pixels <= size * 8 / std::max<std::int64_t>(1, bitsPerPixel);
}

}  // namespace

bool decodeBmp(Bytes file, RowSink& sink) {
  // The toolkit has one limit for the whole program, 128 MB; the sink's bounds count instead.
  [[maybe_unused]] static const bool lifted = (QImageReader::setAllocationLimit(0), true);
  Source source(file);
  QImageReader reader(&source, "bmp");
  reader.setAutoDetectImageFormat(false);
  const QSize size = reader.size();
  if (!sink.allows(size.width(), size.height()) || !canHold(file, std::int64_t{size.width()} * size.height()))
    return false;
  const QImage image = reader.read();
  if (image.isNull() || source.ranOut())
    return false;
  const Alpha alpha = image.hasAlphaChannel() ? Alpha::Straight : Alpha::None;
  if (!sink.begin({image.width(), image.height(), alpha, 1, {}}))
    return false;
  for (int y = 0; y < image.height(); ++y) {
    const QImage row = image.copy(0, y, image.width(), 1).convertToFormat(QImage::Format_RGBA8888);
    std::memcpy(sink.row(), row.constScanLine(0), static_cast<std::size_t>(4 * image.width()));
    sink.finishRow();
  }
  return true;
}

}  // namespace platform::decoding
