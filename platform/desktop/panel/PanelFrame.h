#pragma once

#include "platform/desktop/Appearance.h"

#include <QImage>
#include <QWidget>

namespace platform {

/// The edge of a panel: its round corners, the line around it, and its shadow where there is room for one. It
/// lies over the whole sheet, the panel's contents included, so that these need not know of it.
class PanelFrame : public QWidget {
 public:
  /// The room on each side of the panel that a shadow takes, in points.
  static constexpr int shadowRoom = 32;

  PanelFrame(QWidget* sheet, int cornerRadius, const Color& outline);

  /// `area`: the panel, in the sheet. `isTranslucent`: what lies outside of its corners can be seen through
  /// the window; elsewhere the window itself is cut.
  void fit(const QRect& area, bool isTranslucent);
  /// From 0 to 1: how much is left of all that the frame lies over, in a window that can be seen through.
  void setOpacity(double opacity);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintEdge(const QPaintEvent& event);
  void paintOutside(QPainter& painter);

  const int radius;
  const Color outline;
  QRect area;
  bool isTranslucent = false;
  double opacity = 1;
  QImage shadow;
};

}  // namespace platform
