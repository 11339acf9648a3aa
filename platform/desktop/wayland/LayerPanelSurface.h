#pragma once

#include "platform/desktop/panel/PanelSurface.h"
#include "platform/desktop/wayland/OutputLayer.h"

#include <QObject>

namespace platform {

/// A transparent window over the whole output, in which the panel lies and moves. So it is exactly where it
/// is to be, and hears of clicks beside it. What the user is to reach beside it, while it stays or something
/// is dragged from it, the window takes no input for.
class LayerPanelSurface : public QObject, public PanelSurface {
 public:
  LayerPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void moveTo(const QRectF& place, double opacity) override;
  void close() override;
  [[nodiscard]] bool isBackdropBlurred() const override { return isBlurred; }
  void setStaying(bool isStaying) override;
  void setDragging(bool isDragging) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void takeClicks();
  void takeKeyboard();

  QWidget& window;
  PanelSheet& sheet;
  const Handlers handlers;
  std::optional<OutputLayer> layer;
  bool isStaying = false;
  bool isDragging = false;
  bool isBlurred = false;
};

}  // namespace platform
