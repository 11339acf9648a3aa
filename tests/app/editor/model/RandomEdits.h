#pragma once

#include "app/editor/model/EditorModel.h"

#include <random>

/// Makes random changes, undoable or not.
class RandomEdits {
 public:
  using EditorModel = sorrel::EditorModel;

  explicit RandomEdits(unsigned seed) : random(seed) {}

  void apply(EditorModel& model) {
    switch (below(8)) {
      case 0:
        model.begin(point(model));
        for (int i = below(4); i > 0; --i)
          model.current.change([&](auto& stroke) { stroke->points.append(point(model)); });
        return model.commit();
      case 1:
        for (int i = below(4); i > 0; --i)
          model.extendBlurBrush(point(model));
        return model.commitBlur();
      case 2:
        model.currentBlurRect = QRectF(point(model), QSizeF(below(40), below(40)));
        return model.commitBlur();
      case 3:
        return model.applyCrop({point(model), QSizeF(below(120), below(120))});
      case 4:
        return model.textWM.change([&](auto& text) {
          text.text = QString::number(below(100));
          text.center = point(model);
        });
      case 5:
        if (below(3) == 0) {
          model.logoWM = std::nullopt;
        } else {
          QImage logo(1 + below(9), 1 + below(9), QImage::Format_RGBA8888_Premultiplied);
          logo.fill(QColor::fromHsv(below(360), 255, 255, below(256)));
          model.setLogo(logo);
        }
        return;
      case 6:
        model.blurStyle = below(2) ? sorrel::BlurStyle::gaussian : sorrel::BlurStyle::mosaic;
        model.blurIntensity = below(100) / 100.0;
        return;
      default:
        model.lineWidth = 1 + below(20);
        model.blurBrushWidth = 10 + below(60);
    }
  }
  int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(random); }

 private:
  QPointF point(const EditorModel& model) {
    const QSizeF size = model.displaySize;
    return {below(int(size.width()) + 40) - 20.0, below(int(size.height()) + 40) - 20.0};
  }
  std::mt19937 random;
};
