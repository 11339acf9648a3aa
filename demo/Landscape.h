#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>

#include <vector>

namespace demo::scenery {

struct Hill {
  double height;     // of its middle line, from the top, as a part of the picture's height
  double amplitude;  // likewise
  double waves;      // over the picture's width
  double phase;
  QColor top;
  QColor foot;
};

/// Hills under a sky; all measures are parts of the picture's width or height.
struct Landscape {
  QColor skyTop;
  QColor skyFoot;
  QPointF sun;
  double sunRadius = 0;     // 0 for none
  std::vector<Hill> hills;  // the farthest first
  double shore = 1;         // below it lies a lake that mirrors what is above
};

/// One of a few, which take turns.
[[nodiscard]] Landscape landscapeOf(int number);

[[nodiscard]] QImage landscape(QSize size, const Landscape& view);

}  // namespace demo::scenery
