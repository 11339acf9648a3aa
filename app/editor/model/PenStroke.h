#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QUuid>

#include <optional>

namespace sorrel {

/// Colours are kept as 0xRRGGBB in sRGB, without alpha; a high byte means nothing. These lead from there to a
/// colour, which is opaque, and back, which drops the alpha; absent for a colour that isn't one.
[[nodiscard]] QColor colorFromHex(quint32 colorHex);
[[nodiscard]] std::optional<quint32> hexRGB(const QColor& color);

/// A line drawn by hand: straight from point to point, in display space. Colour and width are those of the
/// moment when it was begun.
struct PenStroke {
  QUuid id = QUuid::createUuid();
  QList<QPointF> points;
  quint32 colorHex = 0;
  double width = 0;

  bool operator==(const PenStroke&) const = default;
};

}  // namespace sorrel
