#include "app/editor/model/Document.h"

#include <algorithm>
#include <cmath>

namespace sorrel {

QSizeF Document::fitted(const QSize& pixels) {
  const double fit = std::min({1000.0 / pixels.width(), 640.0 / pixels.height(), 1.0});
  return {std::round(pixels.width() * fit), std::round(pixels.height() * fit)};
}

std::optional<Placement> Document::placement() const {
  const double scale = imagePixelSize.width() / displaySize.width();
  if (!std::isfinite(scale))
    return std::nullopt;
  return Placement{
      .scale = scale, .origin = {}, .displaySize = displaySize, .lowerEdge = double(imagePixelSize.height())};
}

QSizeF Document::logoSize() const {
  if (!logoWM || logoWM->image.width() <= 0)
    return {0, 0};
  const double width = logoWM->scale * (displaySize.width() * 0.25);
  return {width, width * (double(logoWM->image.height()) / logoWM->image.width())};
}

QRectF Document::logoRect() const {
  QRectF rectangle({0, 0}, logoSize());
  if (logoWM)
    rectangle.moveCenter(logoWM->center);
  return rectangle;
}

QRect Document::keptPixels(const QRectF& rectangle) const {
  const QRectF kept = rectangle.intersected(QRectF({0, 0}, displaySize));
  const auto placed = placement();
  if (!placed || !(kept.width() > 8.0 && kept.height() > 8.0))  // also what isn't a number
    return {};
  const QRectF pixels = placed->rectangle(kept);
  return QRectF(QPointF(std::floor(pixels.left()), std::floor(pixels.top())),
                QPointF(std::ceil(pixels.right()), std::ceil(pixels.bottom())))
      .intersected(QRectF({0, 0}, imagePixelSize))
      .toRect();
}

Document Document::cropped(const QImage& picture) const {
  Document document;
  document.baseImage = picture;
  document.imagePixelSize = picture.size();
  document.displaySize = fitted(picture.size());
  document.textWM = TextWatermark::initial(document.displaySize);
  document.undoStack = undoStack;
  document.undoStack.append(EditAction::crop);
  return document;
}

}  // namespace sorrel
