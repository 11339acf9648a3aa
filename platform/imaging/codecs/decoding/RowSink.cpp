#include "platform/imaging/codecs/decoding/RowSink.h"

#include <QTransform>

#include <limits>

namespace platform::decoding {
namespace {

QImage upright(QImage image, int orientation) {
  switch (orientation) {
    case 2:
      return std::move(image).mirrored(true, false);
    case 3:
      return std::move(image).mirrored(true, true);
    case 4:
      return std::move(image).mirrored(false, true);
    case 5:
      return image.transformed(QTransform().rotate(90)).mirrored(true, false);
    case 6:
      return image.transformed(QTransform().rotate(90));
    case 7:
      return image.transformed(QTransform().rotate(90)).mirrored(false, true);
    case 8:
      return image.transformed(QTransform().rotate(-90));
    default:
      return image;
  }
}

}  // namespace

bool RowSink::allows(std::int64_t width, std::int64_t height) const {
  constexpr std::int64_t longest =
      std::numeric_limits<int>::max() / 4;  // QImage counts a row's bytes in an int
  return width > 0 && height > 0 && width <= longest && height <= longest && width <= limits.pixels / height;
}

bool RowSink::begin(const PictureHeader& header) {
  if (!allows(header.width, header.height))
    return false;
  picture = header;
  rowsDone = 0;
  return prepare();
}

std::optional<QImage> RowSink::finish() {
  if (rowsDone == 0 || rowsDone != picture.height)
    return std::nullopt;
  QImage image = upright(result(), picture.orientation);
  return image.isNull() ? std::nullopt : std::optional(std::move(image));
}

}  // namespace platform::decoding
