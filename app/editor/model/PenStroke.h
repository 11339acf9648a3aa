#pragma once

#include <QList>
#include <QPointF>
#include <QUuid>

namespace sorrel {

/// A line drawn by hand: straight from point to point, in display space. Colour and width are those of the
/// moment when it was begun.
struct PenStroke {
  QUuid id = QUuid::createUuid();
  QList<QPointF> points;
  quint32 colorHex = 0;  // 0xRRGGBB; the high byte means nothing
  double width = 0;

  bool operator==(const PenStroke&) const = default;
};

}  // namespace sorrel
