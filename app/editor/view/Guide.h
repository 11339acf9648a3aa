#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPointF>

class QPainter;

namespace sorrel {

/// A dashed line that helps aiming, of the document's own length unit: it grows with the zoom.
enum class Emphasis { Plain, Emphasized };
void strokeGuide(QPainter& painter, const QPainterPath& path, Emphasis emphasis);

/// How far it reaches beyond its path, in display space.
inline constexpr double guideReach = 1.5;

/// An emphasized circle that follows the pointer: its picture is kept, and moved by whole device pixels.
class GuideCircle {
 public:
  /// The painter's unit is a display unit.
  void paint(QPainter& painter, const QPointF& center, double diameter);

 private:
  QImage picture;
  double pictureDiameter = 0;
  double pictureScale = 0;  // device pixels for a display unit
};

}  // namespace sorrel
