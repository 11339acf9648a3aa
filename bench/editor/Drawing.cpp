#include "bench/editor/Drawing.h"

#include <cmath>

namespace bench {

void addBlur(sorrel::EditorModel& model) {
  for (int number = 0; number < 20; ++number) {
    model.blurStyle = number % 2 ? sorrel::BlurStyle::mosaic : sorrel::BlurStyle::gaussian;
    for (int i = 0; i < 40; ++i)
      model.extendBlurBrush(
          {60.0 + (number * 211) % 800 + 3 * i, 60 + (number * 97) % 500 + 12 * std::sin(i / 5.0)});
    model.commitBlur();
  }
}

void addStroke(sorrel::EditorModel& model, int number) {
  const QPointF start(50 + (number * 37) % 700, 60 + (number * 71) % 480);
  model.begin(start);
  for (int i = 1; i < 200; ++i)
    model.current.change(
        [&](auto& stroke) { stroke->points.append(start + QPointF(i, 40 * std::sin(i / 9.0))); });
  model.commit();
}

}  // namespace bench
