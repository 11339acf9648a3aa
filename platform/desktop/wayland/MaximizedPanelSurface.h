#pragma once

#include "platform/desktop/wayland/CoveringPanelSurface.h"

namespace platform {

/// In a maximized window without a frame, where the compositor has no layers. The bars stay free; other
/// windows that the user goes to while the panel stays lie above it.
class MaximizedPanelSurface : public CoveringPanelSurface {
 public:
  MaximizedPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void setStaying(bool isStaying) override;

 protected:
  [[nodiscard]] QPoint origin() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool isReady = false;
};

}  // namespace platform
