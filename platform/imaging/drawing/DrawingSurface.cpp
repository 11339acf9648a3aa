#include "platform/imaging/drawing/DrawingSurface.h"

#include "platform/imaging/drawing/SmoothImage.h"
#include "platform/imaging/drawing/TextBlock.h"
#include "platform/imaging/filters/PixelMemory.h"

#include <QPainterPath>

#include <algorithm>
#include <cstring>

namespace platform {
namespace {

/// What the painter would do by itself, in memory whose fresh pages cost less.
QImage copied(const QImage& source) {
  QImage copy = blankLike(source, source.size());
  if (copy.isNull())
    return source;
  const auto bytes = static_cast<std::size_t>(4 * source.width());
  for (int y = 0; y < source.height(); ++y)
    std::memcpy(copy.scanLine(y), source.constScanLine(y), bytes);
  return copy;
}

}  // namespace

DrawingSurface::DrawingSurface(const QImage& start)
    : picture(start.convertToFormat(QImage::Format_RGBA8888_Premultiplied)) {
}

DrawingSurface::~DrawingSurface() = default;

QRectF DrawingSurface::inRows(const QRectF& rectangle) const {
  return {rectangle.x(), picture.height() - rectangle.y() - rectangle.height(), rectangle.width(),
          rectangle.height()};
}

QPainter& DrawingSurface::brush() {
  if (!painter) {
    if (!picture.isDetached())
      picture = copied(picture);
    painter = std::make_unique<QPainter>(&picture);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  }
  return *painter;
}

QPainterPath DrawingSurface::outline(const RoundLine& line) const {
  const auto inRows = [this](const QPointF& point) {
    return QPointF(point.x(), picture.height() - point.y());
  };
  QPainterPath path;
  if (line.points.isEmpty())
    return path;
  const QPointF first = inRows(line.points.first());
  if (std::all_of(line.points.begin(), line.points.end(),
                  [&](const QPointF& point) { return point == line.points.first(); })) {
    path.addEllipse(first, line.width / 2, line.width / 2);
    return path;
  }
  path.moveTo(first);
  for (auto point = line.points.begin() + 1; point != line.points.end(); ++point)
    path.lineTo(inRows(*point));
  QPainterPathStroker stroker(QPen(Qt::black, line.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  path = stroker.createStroke(path);
  path.setFillRule(Qt::WindingFill);
  return path;
}

void DrawingSurface::draw(const QImage& image, const QRectF& rectangle, double opacity) {
  brush().setOpacity(opacity);
  drawSmoothly(brush(), image, inRows(rectangle));
  brush().setOpacity(1);
}

void DrawingSurface::replace(const QRectF& shape, const QImage& image, const QPointF& origin) {
  QPainterPath path;
  path.addRect(inRows(shape));
  replace(path, image, origin);
}

void DrawingSurface::replace(const RoundLine& shape, const QImage& image, const QPointF& origin) {
  replace(outline(shape), image, origin);
}

/// A filled path and no clip, since a painter may round a clip to whole pixels.
void DrawingSurface::replace(const QPainterPath& shapeInRows, const QImage& image, const QPointF& origin) {
  QBrush texture(image);
  const QPointF topLeft = inRows({origin, image.size()}).topLeft();
  texture.setTransform(QTransform::fromTranslate(topLeft.x(), topLeft.y()));
  brush().setCompositionMode(QPainter::CompositionMode_Source);
  brush().fillPath(shapeInRows, texture);
  brush().setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void DrawingSurface::draw(const RoundLine& line, const QColor& colour) {
  brush().fillPath(outline(line), colour);
}

void DrawingSurface::draw(const TextBlock& text, const QPointF& bottomLeft) {
  text.draw(brush(), inRows({bottomLeft, text.size()}).topLeft());
}

QImage DrawingSurface::finish() {
  painter.reset();
  return std::move(picture);
}

}  // namespace platform
