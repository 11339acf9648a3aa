#include "platform/desktop/wayland/CoveringPanelSurface.h"

#include "platform/desktop/WindowShape.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace platform {

CoveringPanelSurface::CoveringPanelSurface(QWidget& panelWindow, PanelSheet& panelSheet, Handlers all)
    : window(panelWindow), sheet(panelSheet), handlers(std::move(all)) {
}

bool CoveringPanelSurface::isBackdropBlurred() const {
  // From the first on, though the blur itself waits for the panel to be in its place.
  return canBlurBehind();
}

void CoveringPanelSurface::moveTo(const QRectF& place, double part) {
  shownAt = place;
  opacity = part;
  fit();
}

void CoveringPanelSurface::fit() {
  sheet.fit(PanelFrame::shadowRoom, true);
  QPoint corner = shownAt.topLeft().toPoint() - origin();
  // A window between bars begins where the panel may have been asked to be.
  if (window.size() != window.screen()->size()) {
    constexpr int gap = 4;
    const QSize free = window.size() - sheet.panelSize;
    corner = {std::max(std::min(corner.x(), free.width() - gap), gap),
              std::max(std::min(corner.y(), free.height() - gap), gap)};
  }
  sheet.move(corner - sheet.panel().topLeft());
  sheet.setOpacity(opacity);
  takeClicks();
  if (isBackdropBlurred() && opacity == 1)
    blurBehind(window, sheet.panel().translated(sheet.pos()), sheet.cornerRadius);
}

void CoveringPanelSurface::setStaying(bool stays) {
  isStaying = stays;
  takeClicks();
}

void CoveringPanelSurface::setDragging(bool drags) {
  isDragging = drags;
  takeClicks();
}

void CoveringPanelSurface::takeClicks() {
  takeClicksOnlyIn(window, isStaying || isDragging ? sheet.panel().translated(sheet.pos()) : window.rect());
}

}  // namespace platform
