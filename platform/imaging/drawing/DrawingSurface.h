#pragma once

#include "platform/imaging/drawing/LineMask.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPointF>
#include <QRectF>

#include <memory>
#include <vector>

namespace platform {

class TextBlock;

/// A path straight from point to point, with round caps and joins. Points that all coincide make a dot. The
/// points and the width are in a space of which `scale` pixels are one unit, and whose origin lies at
/// `origin` on the surface.
struct RoundLine {
  const QList<QPointF>& points;
  double width;
  double scale = 1;
  QPointF origin = {};

  [[nodiscard]] QPointF onSurface(const QPointF& point) const { return scale * point + origin; }
};

struct ColouredLine {
  RoundLine line;
  QColor colour;  // opaque
};

/// A picture to draw on, 8-bit premultiplied RGBA in sRGB. One unit is one pixel; the origin is the top left
/// corner and y grows downwards. Shapes are anti-aliased, and what lies outside is cut off.
///
/// It draws into the picture that is moved in; one that others share is copied first, but only when something
/// is drawn.
class DrawingSurface {
 public:
  /// Only the pixels of `dirty` change, all of them if it is null.
  explicit DrawingSurface(QImage picture, const QRect& dirty = {});
  ~DrawingSurface();
  DrawingSurface(const DrawingSurface&) = delete;
  DrawingSurface& operator=(const DrawingSurface&) = delete;

  [[nodiscard]] QSize size() const { return picture.size(); }
  [[nodiscard]] QRect dirty() const { return clip; }

  /// Stretches the whole image over the rectangle.
  void draw(const QImage& image, const QRectF& rectangle, double opacity = 1);
  /// The later ones over the earlier ones.
  void draw(const std::vector<ColouredLine>& lines);
  void draw(const LineMask& line, const QColor& opaque);
  /// Puts the block's measured rectangle at `topLeft`.
  void draw(const TextBlock& text, const QPointF& topLeft);

  /// Lays a picture of the surface's format over what is there, pixel on pixel.
  void lay(const QImage& image, const QPoint& topLeft);
  /// The same with a picture on which there are only these lines.
  void lay(const std::vector<ColouredLine>& lines);

  /// Puts the image in the place of what is there, as far as the shape covers it: nothing of that shines
  /// through. The image's top left corner is at `origin`; the shape ends where the image does.
  void replace(const QRectF& shape, const QImage& image, const QPoint& origin);
  void replace(const RoundLine& shape, const QImage& image, const QPoint& origin);
  void replace(const LineMask& shape, const QImage& image, const QPoint& origin);
  /// Replaces the rows below `row` as far as the shape covers that row.
  void replaceBelow(int row, const RoundLine& shape, const QImage& image, const QPoint& origin);
  void replaceBelow(int row, const LineMask& shape, const QImage& image, const QPoint& origin);

  /// The picture as drawn so far; ends the drawing.
  [[nodiscard]] QImage finish();

 private:
  class LineLayer;

  [[nodiscard]] QPainter& brush();
  void beginPixels();
  [[nodiscard]] std::uint32_t* pixels(int x, int y) { return bits + std::ptrdiff_t(y) * stride + x; }
  template <typename Paint>
  void rasterise(const std::vector<RoundLine>& lines, const Paint& paint) const;

  QImage picture;
  QRect clip;
  std::unique_ptr<QPainter> painter;
  std::uint32_t* bits = nullptr;  // of the picture, once it is ours
  std::ptrdiff_t stride = 0;      // in pixels
};

}  // namespace platform
