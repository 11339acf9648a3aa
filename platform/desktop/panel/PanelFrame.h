#pragma once

#include "platform/desktop/Appearance.h"

#include <QImage>
#include <QWidget>

namespace platform {

/// The edge of a panel: its round corners, the line around it, and its shadow where there is room for one. It
/// lies over the whole window, the panel's contents included, so that these need not know of it.
class PanelFrame : public QWidget {
 public:
  /// The room on each side of the panel that a shadow takes, in points.
  static constexpr int shadowRoom = 32;

  PanelFrame(QWidget* window, int cornerRadius, const Color& outline);

  /// `area`: the panel, in the window. `isTranslucent`: what lies outside of its corners can be seen through
  /// the window; elsewhere the window itself is cut.
  void fit(const QRect& area, bool isTranslucent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintOutside(QPainter& painter);

  const int radius;
  const Color outline;
  QRect area;
  bool isTranslucent = false;
  QImage shadow;
};

}  // namespace platform
