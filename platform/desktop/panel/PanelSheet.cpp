#include "platform/desktop/panel/PanelSheet.h"

namespace platform {

PanelSheet::PanelSheet(QWidget* window, const QSize& size, int radius, const Color& outline)
    : QWidget(window), panelSize(size), cornerRadius(radius), frame(new PanelFrame(this, radius, outline)) {
  resize(size);
}

void PanelSheet::setContent(QWidget* view) {
  content = view;
  content->setParent(this);
  content->setFocus();
}

void PanelSheet::fit(int margin, bool isSeenThrough) {
  room = margin;
  resize(panelSize.grownBy({room, room, room, room}));
  if (content)
    content->setGeometry(panel());
  frame->fit(panel(), isSeenThrough);
}

}  // namespace platform
