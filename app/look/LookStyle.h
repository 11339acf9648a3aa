#pragma once

#include <QProxyStyle>

namespace sorrel {

/// The desktop's own style, but for menus and tooltips, which look alike and as the rest of the program does.
/// Set it on the application.
class LookStyle : public QProxyStyle {
 public:
  using QProxyStyle::polish;
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
