#include "app/editor/view/StretchedView.h"

#include <QPainter>

namespace sorrel {

void StretchedView::begin(const QImage& together, const CanvasView& shown, const QImage& picture,
                          const QSize& fitted) {
  pixels = together;
  view = shown;
  whole = view.isWhole() ? QImage() : picture.scaled(fitted).convertToFormat(together.format());
}

void StretchedView::paint(QPainter& painter, const QRect& picture) const {
  const double across = double(picture.width()) / view.shown.width();
  const double down = double(picture.height()) / view.shown.height();
  const QRectF held(picture.left() + view.area.left() * across, picture.top() + view.area.top() * down,
                    view.area.width() * across, view.area.height() * down);
  if (!whole.isNull() && !held.contains(painter.viewport() & picture))
    painter.drawImage(picture, whole);
  painter.drawImage(held, pixels);
}

}  // namespace sorrel
