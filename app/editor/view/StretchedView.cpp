#include "app/editor/view/StretchedView.h"

#include <QPainter>
#include <QRegion>

namespace sorrel {

void StretchedView::begin(const QImage& together, const CanvasView& shown, const QImage& picture,
                          const QSize& fitted) {
  pixels = together;
  view = shown;
  whole = view.isWhole() ? QImage() : picture.scaled(fitted).convertToFormat(together.format());
}

void StretchedView::paint(QPainter& painter, const QRect& picture, const QRect& exposed) const {
  const double across = double(picture.width()) / view.shown.width();
  const double down = double(picture.height()) / view.shown.height();
  const QRectF held(picture.left() + view.area.left() * across, picture.top() + view.area.top() * down,
                    view.area.width() * across, view.area.height() * down);
  if (!whole.isNull())
    for (const QRect& beyond : QRegion(picture & exposed) - held.toAlignedRect().adjusted(1, 1, -1, -1)) {
      painter.save();
      painter.setClipRect(beyond, Qt::IntersectClip);
      painter.drawImage(picture, whole);
      painter.restore();
    }
  painter.drawImage(held, pixels);
}

}  // namespace sorrel
