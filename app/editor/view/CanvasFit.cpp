#include "app/editor/view/CanvasFit.h"

#include <algorithm>
#include <cmath>

namespace sorrel {
namespace {

constexpr double leastFit = 0.05;
constexpr double wheelStep = 1.189207115002721;  // four notches double

int whole(double length) {
  return std::max(1, int(std::lround(std::min(length, 1e6))));
}

}  // namespace

double CanvasFit::fit() const {
  const double availableWidth = std::max(area.width() - margin, 1.0);
  const double availableHeight = std::max(area.height() - margin, 1.0);
  return std::clamp(std::min(availableWidth / displaySize.width(), availableHeight / displaySize.height()),
                    leastFit, 1.0);
}

QSize CanvasFit::shown() const {
  const double pixels = scale() * ratio;
  const double proportion = double(imagePixelSize.height()) / imagePixelSize.width();
  if (displaySize.width() < 1) {  // so narrow a picture that its display width rounds to nothing
    const int height = whole(displaySize.height() * pixels);
    return {whole(height / proportion), height};
  }
  const int width = whole(displaySize.width() * pixels);
  return {width, whole(width * proportion)};
}

QSize CanvasFit::areaPixels() const {
  return {int(std::lround(area.width() * ratio)), int(std::lround(area.height() * ratio))};
}

QSize CanvasFit::content() const {
  return shown().expandedTo(areaPixels());
}

QPoint CanvasFit::scrollLimit() const {
  const QSize beyond = content() - areaPixels();
  return {beyond.width(), beyond.height()};
}

QPoint CanvasFit::inset() const {
  const QSize beside = content() - shown();
  return {beside.width() / 2, beside.height() / 2};
}

QRect CanvasFit::picture() const {
  return {inset() - scrolled, shown()};
}

QRect CanvasFit::visible() const {
  return QRect({0, 0}, shown()) & QRect(-picture().topLeft(), areaPixels());
}

double CanvasFit::pixelsPerUnit() const {
  return displaySize.width() < 1 ? scale() * ratio : shown().width() / displaySize.width();
}

QPointF CanvasFit::toDisplay(const QPointF& point) const {
  return (point * ratio - picture().topLeft()) / pixelsPerUnit();
}

QPointF CanvasFit::toCanvas(const QPointF& display) const {
  return (display * pixelsPerUnit() + picture().topLeft()) / ratio;
}

CanvasFit CanvasFit::scrolledTo(const QPointF& pixels) const {
  const QPoint limit = scrollLimit();
  CanvasFit next = *this;
  next.scrolled = isZoomed() ? QPoint(int(std::lround(std::clamp(pixels.x(), 0.0, double(limit.x())))),
                                      int(std::lround(std::clamp(pixels.y(), 0.0, double(limit.y())))))
                             : limit / 2;
  return next;
}

QPointF CanvasFit::placeAt(const QPointF& pixels) const {
  const QPointF inPicture = pixels - picture().topLeft();
  return {inPicture.x() / shown().width(), inPicture.y() / shown().height()};
}

CanvasFit CanvasFit::withPlaceAt(const QPointF& place, const QPointF& pixels) const {
  const QPointF inPicture(place.x() * shown().width(), place.y() * shown().height());
  return scrolledTo(inset() + inPicture - pixels);
}

CanvasFit CanvasFit::zoomedTo(double nextZoom, const QPointF& anchor) const {
  CanvasFit next = *this;
  next.zoom = std::clamp(nextZoom, leastZoom, greatestZoom);
  return next.withPlaceAt(placeAt(anchor * ratio), anchor * ratio);
}

CanvasFit CanvasFit::resized(const QSizeF& nextArea, double nextRatio, const QSizeF& nextDisplaySize,
                             const QSize& nextPixelSize) const {
  CanvasFit next = *this;
  next.area = nextArea;
  next.ratio = nextRatio;
  next.displaySize = nextDisplaySize;
  next.imagePixelSize = nextPixelSize;
  const auto middle = [](const CanvasFit& fit) {
    return QPointF(fit.areaPixels().width(), fit.areaPixels().height()) / 2;
  };
  return next.withPlaceAt(area.isEmpty() ? QPointF(0.5, 0.5) : placeAt(middle(*this)), middle(next));
}

void CanvasZoom::set(double next) {
  factor = std::clamp(next, CanvasFit::leastZoom, CanvasFit::greatestZoom);
}

void CanvasZoom::turnWheel(double notches) {
  set(factor * std::pow(wheelStep, notches));
  endPinch();
}

}  // namespace sorrel
