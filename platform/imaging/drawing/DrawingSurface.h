#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPointF>
#include <QRectF>

#include <memory>

namespace platform {

class TextBlock;

/// A straight-lined path of some width, with round caps and joins. Points that all coincide make a dot.
struct RoundLine {
  const QList<QPointF>& points;
  double width;
};

/// A picture to draw on, 8-bit premultiplied RGBA in sRGB. One unit is one pixel; the origin is the picture's
/// bottom left corner and y grows upwards. Shapes are anti-aliased, and what lies outside is cut off.
///
/// Nothing is copied until something is drawn: till then the surface shares its pixels with the picture that
/// it began with.
class DrawingSurface {
 public:
  explicit DrawingSurface(const QImage& picture);
  ~DrawingSurface();
  DrawingSurface(const DrawingSurface&) = delete;
  DrawingSurface& operator=(const DrawingSurface&) = delete;

  [[nodiscard]] QSize size() const { return picture.size(); }

  /// Stretches the whole image over the rectangle.
  void draw(const QImage& image, const QRectF& rectangle, double opacity = 1);
  /// Puts the image in the place of what is there, as far as the shape covers it: nothing of that shines
  /// through. The image's lower left corner is at `origin`; it must reach as far as the shape does on the
  /// surface.
  void replace(const QRectF& shape, const QImage& image, const QPointF& origin);
  void replace(const RoundLine& shape, const QImage& image, const QPointF& origin);
  void draw(const RoundLine& line, const QColor& colour);
  /// Puts the block's measured rectangle at `bottomLeft`.
  void draw(const TextBlock& text, const QPointF& bottomLeft);

  /// Where a rectangle of this space lies in the picture's rows, the first of which is at the top.
  [[nodiscard]] QRectF inRows(const QRectF& rectangle) const;

  /// The picture as drawn so far; ends the drawing.
  [[nodiscard]] QImage finish();

 private:
  [[nodiscard]] QPainter& brush();
  [[nodiscard]] QPainterPath outline(const RoundLine& line) const;
  void replace(const QPainterPath& shapeInRows, const QImage& image, const QPointF& origin);

  QImage picture;
  std::unique_ptr<QPainter> painter;
};

}  // namespace platform
