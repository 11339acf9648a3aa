#pragma once

#include "app/look/ControlStyle.h"

namespace sorrel {

/// The program's look: that of the controls, and on sheets that look alike menus, tooltips and the lists of
/// combo boxes, each as dark or light as the window that it belongs to. Set it on the application.
class LookStyle : public ControlStyle {
 public:
  using ControlStyle::polish;
  void polish(QWidget* widget) override;
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* answer) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                       const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace sorrel
