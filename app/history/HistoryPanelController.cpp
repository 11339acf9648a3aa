#include "app/history/HistoryPanelController.h"

#include "app/capture/ScreenshotStore.h"
#include "app/history/HistoryView.h"
#include "app/history/PanelGeometry.h"
#include "platform/desktop/FocusablePanel.h"

namespace sorrel {

using platform::FocusablePanel;
using platform::NotificationCenter;

namespace {

constexpr std::chrono::milliseconds openingDuration(180);

}  // namespace

void HistoryPanelController::DeleteLater::operator()(FocusablePanel* panel) const {
  panel->deleteLater();
}

HistoryPanelController::HistoryPanelController(std::shared_ptr<HistoryViewModel> model,
                                               ThumbnailLoader& thumbnails)
    : viewModel(std::move(model)), loader(thumbnails) {
}

HistoryPanelController::~HistoryPanelController() {
  close();
}

bool HistoryPanelController::isVisible() const {
  return panel && panel->isVisible();
}

void HistoryPanelController::show(const std::optional<QRectF>& anchorRect) {
  viewModel->screenshots = ScreenshotStore::all();
  panel.reset(new FocusablePanel(PanelGeometry::size, PanelGeometry::cornerRadius));
  panel->setContentView(new HistoryView(viewModel, loader));
  panel->appear(PanelGeometry::targetFrame(anchorRect, platform::screens()), PanelGeometry::openingOffset,
                openingDuration);
  resignKeyObserver = NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(FocusablePanel::didResignKeyNotification), NotificationCenter::Queue::Main,
      [this](const auto&) { resignedKey(); }, panel->notificationObject());
}

void HistoryPanelController::resignedKey() {
  if (!viewModel->isLocked)
    close();
}

void HistoryPanelController::close() {
  resignKeyObserver.end();
  if (panel)
    panel->hide();
  panel.reset();
}

}  // namespace sorrel
