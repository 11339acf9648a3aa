#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QUuid>

#include <variant>

namespace sorrel {

enum class BlurStyle { gaussian, mosaic };
/// By what gesture a region is laid: free strokes or a rectangle.
enum class BlurApply { brush, area };

/// A part of the picture that is shown blurred, in display space. It holds the shape alone: how strong the
/// blur is, the model says for all regions at once.
struct BlurRegion {
  /// A line with round caps and joins.
  struct Stroke {
    QList<QPointF> points;
    double width = 0;

    bool operator==(const Stroke&) const = default;
  };
  using Kind = std::variant<Stroke, QRectF>;

  QUuid id = QUuid::createUuid();
  Kind kind;
  BlurStyle style = BlurStyle::gaussian;

  bool operator==(const BlurRegion&) const = default;
};

}  // namespace sorrel
