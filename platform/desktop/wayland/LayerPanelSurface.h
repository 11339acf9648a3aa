#pragma once

#include "platform/desktop/wayland/CoveringPanelSurface.h"
#include "platform/desktop/wayland/OutputLayer.h"

namespace platform {

/// On a layer of the output, above all windows. Only where a full-screen window would hide that layer it is
/// on the topmost one: this belongs to the selection of a capture, which is to lie above the panel.
class LayerPanelSurface : public CoveringPanelSurface {
 public:
  LayerPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void close() override;
  void setStaying(bool isStaying) override;
  void setDragging(bool isDragging) override;
  void setSelecting(bool isSelecting) override;

 protected:
  [[nodiscard]] QPoint origin() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::optional<OutputLayer> layer;
};

}  // namespace platform
