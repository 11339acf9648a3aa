#pragma once

#include "platform/desktop/panel/PanelFrame.h"

#include <QWidget>

namespace platform {

/// The panel itself within its window: what it shows, its edge, and the room around it that its shadow takes.
/// It has no part in where in the window, or on the screen, it is.
class PanelSheet : public QWidget {
 public:
  PanelSheet(QWidget* window, const QSize& panelSize, int cornerRadius, const Color& outline);

  /// `view` fills the panel and belongs to it from now on.
  void setContent(QWidget* view);
  /// Makes that many points of room on each side. `isSeenThrough`: what lies outside of the panel can be seen
  /// through the window.
  void fit(int margin, bool isSeenThrough);
  /// From 0 to 1, by painting: for windows that can't be faded as a whole.
  void setOpacity(double opacity) { frame->setOpacity(opacity); }

  /// The panel, in the sheet.
  [[nodiscard]] QRect panel() const { return QRect(QPoint(room, room), panelSize); }
  [[nodiscard]] int margin() const { return room; }

  const QSize panelSize;
  const int cornerRadius;

 private:
  PanelFrame* const frame;
  QWidget* content = nullptr;
  int room = 0;
};

}  // namespace platform
