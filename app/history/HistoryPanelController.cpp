#include "app/history/HistoryPanelController.h"

#include "app/capture/CaptureService.h"
#include "app/capture/ScreenshotStore.h"
#include "app/history/HistoryColors.h"
#include "app/history/HistoryView.h"
#include "app/history/PanelGeometry.h"
#include "app/history/ThumbnailLoader.h"
#include "app/settings/LocalizationManager.h"
#include "platform/desktop/FocusablePanel.h"
#include "platform/desktop/Image.h"

#include <QCursor>

namespace sorrel {

using platform::FocusablePanel;
using platform::NotificationCenter;

namespace {

constexpr std::chrono::milliseconds openingDuration(180);
/// How long after a click a tray may still be telling of it.
constexpr std::chrono::milliseconds clickTail(300);

}  // namespace

void HistoryPanelController::DeleteLater::operator()(FocusablePanel* panel) const {
  panel->deleteLater();
}

HistoryPanelController::HistoryPanelController(std::shared_ptr<HistoryViewModel> model,
                                               ThumbnailLoader& thumbnails)
    : viewModel(std::move(model)), loader(thumbnails), listObserver(viewModel->screenshots.observe([this] {
        if (listChange.isPending())
          return;
        listed = viewModel->screenshots;
        listChange = platform::MainQueue::main().asyncAfter({}, [this] { forgetLost(); });
      })) {
}

HistoryPanelController::~HistoryPanelController() {
  close();
}

bool HistoryPanelController::isVisible() const {
  return panel && panel->isVisible();
}

void HistoryPanelController::show(const std::optional<QRectF>& anchorRect) {
  viewModel->screenshots = ScreenshotStore::all();
  forgetClick();
  panel.reset(new FocusablePanel(PanelGeometry::size, PanelGeometry::cornerRadius, HistoryColors::border));
  panel->setWindowTitle(localized(QStringLiteral("history.title")));
  if (const auto image = platform::Image::named(QStringLiteral("MenuBarIcon")))
    panel->setWindowIcon(image->icon);
  panel->setContentView(new HistoryView(viewModel, loader));
  const auto onBar = anchorRect ? std::optional(anchorRect->center()) : std::nullopt;
  panel->appear(PanelGeometry::targetFrame(anchorRect, platform::screens(onBar)),
                PanelGeometry::openingOffset, openingDuration);
  resignKeyObserver = NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(FocusablePanel::didResignKeyNotification), NotificationCenter::Queue::Main,
      [this](const auto&) { resignedKey(); }, panel->notificationObject());
  panel->setStaying(viewModel->isLocked);
  lockObserver = viewModel->isLocked.observe([this] {
    lockChange =
        platform::MainQueue::main().asyncAfter({}, [this] { panel->setStaying(viewModel->isLocked); });
  });
  panel->setSelecting(CaptureService::shared().selections > 0);
  selectionObserver = CaptureService::shared().selections.observe([this] {
    selectionChange = platform::MainQueue::main().asyncAfter(
        {}, [this] { panel->setSelecting(CaptureService::shared().selections > 0); });
  });
  buttons.emplace([this](platform::PointerButtons::Change change) { buttonChanged(change); });
}

void HistoryPanelController::resignedKey() {
  if (!viewModel->isLocked)
    close();
}

void HistoryPanelController::buttonChanged(platform::PointerButtons::Change change) {
  using Change = platform::PointerButtons::Change;
  if (panel) {
    const bool isBeside =
        change == Change::Pressed && !panel->isKeyboardHeld() && !panel->isAt(QCursor::pos());
    if (isBeside && !viewModel->isLocked) {
      isClickClosing = true;
      close();
    }
  } else if (change == Change::Released) {
    clickEnd = platform::MainQueue::main().asyncAfter(clickTail, [this] { forgetClick(); });
  } else {
    forgetClick();
  }
}

void HistoryPanelController::forgetClick() {
  clickEnd.cancel();
  isClickClosing = false;
  buttons.reset();
}

void HistoryPanelController::forgetLost() {
  QSet<QByteArray> lost;
  for (const Screenshot& shot : std::exchange(listed, {}))
    lost.insert(shot.path);
  for (const Screenshot& shot : viewModel->screenshots.get())
    lost.remove(shot.path);
  loader.forget(lost);
}

void HistoryPanelController::close() {
  if (!isClickClosing)
    buttons.reset();
  resignKeyObserver.end();
  lockObserver.end();
  lockChange.cancel();
  selectionObserver.end();
  selectionChange.cancel();
  if (panel)
    panel->hide();
  panel.reset();
}

}  // namespace sorrel
