#include "app/editor/view/CanvasView.h"

#include "platform/imaging/drawing/LineMask.h"
#include "platform/imaging/filters/BlankPicture.h"

#include <algorithm>
#include <cstring>

namespace sorrel {

CanvasView CanvasView::of(const QSize& shown, const QRect& visible, double scale, const QSizeF& displaySize) {
  constexpr int tile = platform::LineMask::tileSize;
  const auto up = [](int end) { return (end + tile - 1) / tile * tile; };
  QRect area;
  if (!visible.isEmpty())
    area.setCoords(visible.left() / tile * tile, visible.top() / tile * tile, up(visible.right() + 1) - 1,
                   up(visible.bottom() + 1) - 1);
  return {shown, area & QRect({0, 0}, shown), scale, displaySize};
}

Placement CanvasView::placement() const {
  return {.scale = scale,
          .origin = -area.topLeft(),
          .displaySize = displaySize,
          .lowerEdge = double(shown.height() - area.top())};
}

void copyPixels(QImage& target, const QPoint& to, const QImage& source, const QRect& rectangle) {
  const auto bytes = 4 * std::size_t(std::max(rectangle.width(), 0));
  for (int row = 0; row < rectangle.height(); ++row)
    std::memcpy(target.scanLine(to.y() + row) + 4 * std::ptrdiff_t(to.x()),
                source.constScanLine(rectangle.top() + row) + 4 * std::ptrdiff_t(rectangle.left()), bytes);
}

QImage newLayer(const QSize& size) {
  static const QImage format(1, 1, QImage::Format_RGBA8888_Premultiplied);
  return size.isEmpty() ? QImage() : platform::blankLike(format, size);
}

QImage scrolledLayer(const QImage& layer, const CanvasView& from, const CanvasView& to) {
  QImage scrolled = newLayer(to.area.size());
  const QRect shared = from.sharedWith(to);
  copyPixels(scrolled, shared.topLeft() + from.area.topLeft() - to.area.topLeft(), layer, shared);
  return scrolled;
}

}  // namespace sorrel
