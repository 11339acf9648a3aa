#pragma once

#include "app/history/HistoryViewModel.h"
#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/panel/PointerButtons.h"

#include <QRectF>

#include <memory>
#include <optional>

namespace platform {
class FocusablePanel;
}

namespace sorrel {

class ThumbnailLoader;

/// Shows the history as a floating panel. Each opening makes a new one and each closing throws it away; what
/// lasts is the view model. A panel that loses the keyboard, or sees a click beside it, closes, unless the
/// model is locked then.
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

  /// Whether the panel has closed for a click that is still going on. Who was clicked has yet to act on it;
  /// one that would open and close the panel has done its part.
  [[nodiscard]] bool isClosedByPresentClick() const { return isClickClosing; }

  /// The panel while it is open.
  [[nodiscard]] platform::FocusablePanel* window() const { return panel.get(); }

 private:
  void resignedKey();
  void buttonChanged(platform::PointerButtons::Change change);
  void forgetClick();
  /// Lets the loader forget the thumbnails of what the list has lost, which nobody will ask for again.
  void forgetLost();

  /// A panel often closes from within its own events.
  struct DeleteLater {
    void operator()(platform::FocusablePanel* panel) const;
  };

  const std::shared_ptr<HistoryViewModel> viewModel;
  ThumbnailLoader& loader;
  std::unique_ptr<platform::FocusablePanel, DeleteLater> panel;
  platform::Subscription resignKeyObserver;
  platform::Subscription lockObserver;
  platform::WorkItem lockChange;
  std::vector<Screenshot> listed;  // before a change that is still to be seen to
  platform::WorkItem listChange;
  platform::Subscription listObserver;
  platform::Subscription selectionObserver;
  platform::WorkItem selectionChange;
  // While it is open, and to the end of the click that closed it.
  std::optional<platform::PointerButtons> buttons;
  bool isClickClosing = false;
  platform::WorkItem clickEnd;
};

}  // namespace sorrel
