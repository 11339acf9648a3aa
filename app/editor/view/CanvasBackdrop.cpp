#include "app/editor/view/CanvasBackdrop.h"

#include "app/look/SoftShadow.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>

namespace sorrel {
namespace {

constexpr int tile = 14;  // of the checkerboard, in points
constexpr QColor dark(41, 41, 41);
constexpr QColor light(56, 56, 56);
constexpr QColor veil(0, 0, 0, 10);  // below a picture that one can see through
constexpr SoftShadow shadowLook{.reach = 14, .drop = 5, .opacity = 0.55};
/// From the picture's corner inwards and outwards, in points: beyond these the shadow is the same all along a
/// side.
constexpr int shadowInside = 30;
constexpr int shadowOutside = 24;

int pixels(double points, double ratio) {
  return int(std::lround(points * ratio));
}

void paintCheckerboard(QPainter& painter, const QRect& exposed, double ratio) {
  painter.fillRect(exposed, dark);
  const auto tileAt = [ratio](int pixel) { return int(std::floor(pixel / (tile * ratio))); };
  for (int row = tileAt(exposed.top()); row <= tileAt(exposed.bottom()) + 1; ++row)
    for (int column = tileAt(exposed.left()); column <= tileAt(exposed.right()) + 1; ++column)
      if ((row + column) % 2 == 0) {
        const QPoint corner(pixels(column * tile, ratio), pixels(row * tile, ratio));
        const QPoint end(pixels((column + 1) * tile, ratio) - 1, pixels((row + 1) * tile, ratio) - 1);
        painter.fillRect(QRect(corner, end) & exposed, light);
      }
}

}  // namespace

const QImage& CanvasBackdrop::shadowAt(double ratio) {
  if (shadowRatio == ratio)
    return shadow;
  shadowRatio = ratio;
  const int side = 2 * pixels(shadowOutside, ratio) + 2 * pixels(shadowInside, ratio) + 1;
  shadow = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
  shadow.fill(Qt::transparent);
  QPainter painter(&shadow);
  painter.scale(ratio, ratio);
  const double outside = pixels(shadowOutside, ratio) / ratio;
  paintSoftShadow(painter,
                  QRectF(0, 0, side / ratio, side / ratio).adjusted(outside, outside, -outside, -outside),
                  cornerRadius, shadowLook);
  return shadow;
}

void CanvasBackdrop::paintShadow(QPainter& painter, const QRect& picture, double ratio) {
  const int outside = pixels(shadowOutside, ratio);
  const int inside = pixels(shadowInside, ratio);
  if (std::min(picture.width(), picture.height()) <= 2 * inside) {
    painter.save();
    painter.scale(ratio, ratio);
    paintSoftShadow(painter, QRectF(QPointF(picture.topLeft()) / ratio, QSizeF(picture.size()) / ratio),
                    cornerRadius, shadowLook);
    painter.restore();
    return;
  }
  const int corner = outside + inside;
  const QImage& patch = shadowAt(ratio);
  const QRect whole = picture.adjusted(-outside, -outside, outside, outside);
  const std::array fromX{0, corner, corner + 1, patch.width()};
  const std::array toX{whole.left(), whole.left() + corner, whole.right() + 1 - corner, whole.right() + 1};
  const std::array toY{whole.top(), whole.top() + corner, whole.bottom() + 1 - corner, whole.bottom() + 1};
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column)
      painter.drawImage(
          QRect(QPoint(toX[column], toY[row]), QPoint(toX[column + 1] - 1, toY[row + 1] - 1)), patch,
          QRect(QPoint(fromX[column], fromX[row]), QPoint(fromX[column + 1] - 1, fromX[row + 1] - 1)));
}

void CanvasBackdrop::paint(QPainter& painter, const QRect& exposed, const QRect& picture, double ratio) {
  paintCheckerboard(painter, exposed, ratio);
  if (!picture.contains(exposed)) {
    painter.save();
    painter.setClipRect(exposed, Qt::IntersectClip);
    paintShadow(painter, picture, ratio);
    painter.restore();
  }
  painter.fillRect(picture & exposed, veil);
}

void CanvasBackdrop::paintAroundCorners(QPainter& painter, const QRect& exposed, const QRect& picture,
                                        double ratio) {
  const int side = std::min({pixels(cornerRadius, ratio), picture.width() / 2, picture.height() / 2});
  const QRect inner = picture.adjusted(side, side, -side, -side);
  QPainterPath rounded;
  rounded.addRoundedRect(picture, cornerRadius * ratio, cornerRadius * ratio);
  for (const QPoint& corner :
       {picture.topLeft(), QPoint(inner.right() + 1, picture.top()),
        QPoint(picture.left(), inner.bottom() + 1), inner.bottomRight() + QPoint(1, 1)}) {
    const QRect square(corner, QSize(side, side));
    if (!square.intersects(exposed))
      continue;
    QImage behind(square.size(), QImage::Format_RGB32);
    QPainter below(&behind);
    below.translate(-square.topLeft());
    paintCheckerboard(below, square, ratio);
    paintShadow(below, picture, ratio);
    below.end();
    QBrush texture(behind);
    texture.setTransform(QTransform::fromTranslate(square.x(), square.y()));
    QPainterPath outside;
    outside.addRect(square);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(outside - rounded, texture);
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
}

}  // namespace sorrel
