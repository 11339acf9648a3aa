#pragma once

#include "platform/desktop/panel/PanelSurface.h"

#include <QObject>
#include <QPoint>

namespace platform {

/// A transparent window over all of an output, or all that its bars leave, in which the panel lies and moves.
/// So it is exactly where it is to be, and hears of clicks beside it. What the user is to reach beside it,
/// while it stays or something is dragged from it, the window takes no input for.
class CoveringPanelSurface : public QObject, public PanelSurface {
 public:
  void moveTo(const QRectF& place, double opacity) override;
  /// What is dragged takes the keyboard along on some desktops; the drag's end tells what becomes of that.
  [[nodiscard]] bool hasKeyboard() const override { return isDragging; }
  [[nodiscard]] bool isBackdropBlurred() const override;
  void setStaying(bool isStaying) override;
  void beginDrag() override { setDragging(true); }
  void endDrag(bool) override { setDragging(false); }

 protected:
  CoveringPanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  /// Where the window's upper left corner is on the screen.
  [[nodiscard]] virtual QPoint origin() const = 0;
  [[nodiscard]] bool isPanelStaying() const { return isStaying; }
  [[nodiscard]] bool isPanelDragging() const { return isDragging; }
  /// Has the panel where it is to be in a window that has another size or origin now.
  void fit();

  QWidget& window;
  PanelSheet& sheet;
  const Handlers handlers;

 private:
  void setDragging(bool isDragging);
  void takeClicks();

  QRectF shownAt;
  double opacity = 1;
  bool isStaying = false;
  bool isDragging = false;
};

}  // namespace platform
