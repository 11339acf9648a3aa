#pragma once

#include "platform/desktop/Motion.h"

#include <QImage>
#include <QRectF>
#include <QWidget>

#include <chrono>
#include <optional>

namespace platform {

/// The window of a panel that takes the keyboard: without a frame, above ordinary windows, not in the task
/// bar, with rounded corners.
///
/// Where the desktop composites its windows, what lies outside of the corners is transparent and a shadow
/// falls around the panel; clicks on the shadow belong to what is beneath. Elsewhere the window is cut to the
/// panel's shape, and has a line around it in place of the shadow. Frames are the panel's own, without its
/// shadow.
class FocusablePanel : public QWidget {
 public:
  /// Posted on the default NotificationCenter when the panel has lost the keyboard; its object is
  /// notificationObject().
  static constexpr char didResignKeyNotification[] = "NSWindowDidResignKeyNotification";

  FocusablePanel(const QSize& contentSize, int cornerRadius);

  /// `view` fills the panel and belongs to it from now on; the keyboard goes to it when the panel appears. It
  /// must leave its own corners unpainted.
  void setContentView(QWidget* view);

  /// Shows the panel above the others with the keyboard in it, moving within `duration` from its place plus
  /// `offset` to `frame`, and fading in where the desktop composites.
  void appear(const QRectF& frame, const QPointF& offset, std::chrono::milliseconds duration);

  [[nodiscard]] QVariant notificationObject() const;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void tellWindowManager();
  void letClicksThroughShadow();
  void moveTo(const QRectF& frame);
  [[nodiscard]] QRect contentRect() const;

  const QSize contentSize;
  const int cornerRadius;
  const bool isComposited;
  const int margin;  // on each side, for the shadow
  QImage shadow;
  std::optional<Motion> motion;
};

}  // namespace platform
