#pragma once

#include "platform/base/MainQueue.h"
#include "platform/desktop/wayland/CoveringPanelSurface.h"
#include "platform/desktop/wayland/OutputLayer.h"

namespace platform {

/// On a layer of the output, above all windows. Only where a full-screen window hides that layer it goes to
/// the topmost one: this belongs to the selection of a capture, which is to lie above the panel.
class LayerPanelSurface : public CoveringPanelSurface {
 public:
  LayerPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void close() override;
  void setStaying(bool isStaying) override;

 protected:
  [[nodiscard]] QPoint origin() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void raiseIfHidden();

  std::optional<OutputLayer> layer;
  WaylandObject<wl_callback> seen{nullptr, {wl_callback_destroy}};  // while the panel isn't
  WorkItem raising;
};

}  // namespace platform
