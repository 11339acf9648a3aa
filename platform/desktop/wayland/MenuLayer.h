#pragma once

#include "platform/desktop/wayland/OutputLayer.h"

#include <QWidget>

namespace platform {

/// What a menu opens from that belongs to no window, such as a tray's: a transparent layer over the output.
/// It has the keyboard for the menu, and hears of the clicks beside it.
class MenuLayer : public QWidget {
 public:
  /// On the output with that place; nullptr where there are no layers, or none is needed.
  [[nodiscard]] static std::unique_ptr<MenuLayer> at(const QPoint& place);
  ~MenuLayer() override;

  void setVisible(bool isVisible) override;

 private:
  explicit MenuLayer(QScreen& screen);

  std::optional<OutputLayer> layer;
};

}  // namespace platform
