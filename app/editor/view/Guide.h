#pragma once

#include <QPainterPath>

class QPainter;

namespace sorrel {

/// A dashed line that helps aiming, of the document's own length unit: it grows with the zoom.
enum class Emphasis { Plain, Emphasized };
void strokeGuide(QPainter& painter, const QPainterPath& path, Emphasis emphasis);

/// How far it reaches beyond its path, in display space.
inline constexpr double guideReach = 1.5;

}  // namespace sorrel
