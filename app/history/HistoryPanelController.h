#pragma once

#include "app/history/HistoryViewModel.h"
#include "platform/base/NotificationCenter.h"

#include <QRectF>

#include <memory>
#include <optional>

namespace platform {
class FocusablePanel;
}

namespace sorrel {

class ThumbnailLoader;

/// Shows the history as a floating panel. Each opening makes a new one and each closing throws it away; what
/// lasts is the view model. A panel that loses the keyboard closes, unless the model is locked then.
class HistoryPanelController {
 public:
  HistoryPanelController(std::shared_ptr<HistoryViewModel> viewModel, ThumbnailLoader& loader);
  ~HistoryPanelController();
  HistoryPanelController(const HistoryPanelController&) = delete;
  HistoryPanelController& operator=(const HistoryPanelController&) = delete;

  [[nodiscard]] bool isVisible() const;
  /// Not while a panel is visible. `anchorRect`: what the panel hangs below.
  void show(const std::optional<QRectF>& anchorRect);
  /// Safe when nothing is open.
  void close();

  /// The panel while it is open.
  [[nodiscard]] platform::FocusablePanel* window() const { return panel.get(); }

 private:
  void resignedKey();

  /// A panel often closes from within its own events.
  struct DeleteLater {
    void operator()(platform::FocusablePanel* panel) const;
  };

  const std::shared_ptr<HistoryViewModel> viewModel;
  ThumbnailLoader& loader;
  std::unique_ptr<platform::FocusablePanel, DeleteLater> panel;
  platform::Subscription resignKeyObserver;
};

}  // namespace sorrel
