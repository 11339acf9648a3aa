#include "platform/imaging/filters/BlankPicture.h"

#include "platform/imaging/png/LargeMemory.h"

#include <QColorSpace>

namespace platform {

QImage blankLike(const QImage& source, const QSize& size) {
  const std::size_t stride = static_cast<std::size_t>(size.width()) * 4;
  auto memory = allocateLarge<uchar>(stride * static_cast<std::size_t>(size.height()));
  if (!memory)
    return {};
  QImage result(memory.get(), size.width(), size.height(), static_cast<qsizetype>(stride), source.format(),
                std::free, memory.get());
  if (!result.isNull())
    (void)memory.release();  // it is the picture's now
  result.setDevicePixelRatio(source.devicePixelRatio());
  result.setColorSpace(source.colorSpace());
  return result;
}

}  // namespace platform
