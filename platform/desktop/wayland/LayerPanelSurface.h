#pragma once

#include "platform/desktop/wayland/CoveringPanelSurface.h"
#include "platform/desktop/wayland/OutputLayer.h"
#include "platform/desktop/wayland/Panes.h"

#include <memory>
#include <vector>

namespace platform {

/// On a layer of the output, above all windows. Only where a full-screen window would hide that layer it is
/// on the topmost one: this belongs to the selection of a capture, which is to lie above the panel.
class LayerPanelSurface : public CoveringPanelSurface {
 public:
  LayerPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void close() override;
  void setStaying(bool isStaying) override;
  void setSelecting(bool isSelecting) override;
  void beginDrag() override;
  void endDrag(bool isTaken) override;

 protected:
  [[nodiscard]] QPoint origin() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// What is clicked on other outputs is beside the panel too.
  void watchOtherOutputs();
  [[nodiscard]] bool isOnOtherOutput(const wl_surface* surface) const;

  std::optional<OutputLayer> layer;
  QScreen* output = nullptr;  // that the layer is on, while it is there
  std::vector<std::unique_ptr<Pane>> otherOutputs;
  std::optional<PanePointer> pointer;
};

}  // namespace platform
