#pragma once

#include <QObject>

class QWindow;

struct zwlr_layer_surface_v1;

namespace platform {

/// The menus and tooltips of a window that is a layer surface. The toolkit would make ordinary windows of
/// them, since a popup of its own needs a parent of its own kind: here they become popups of the layer.
class LayerPopups : public QObject {
 public:
  /// Both outlive this.
  LayerPopups(QWindow& window, zwlr_layer_surface_v1& layer);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool isOurs(const QWindow& popup) const;
  void adopt(QWindow& popup);

  QWindow& window;
  zwlr_layer_surface_v1& layer;
};

}  // namespace platform
