#pragma once

#include "platform/desktop/Motion.h"
#include "platform/desktop/panel/CompositingWatch.h"
#include "platform/desktop/panel/PanelFrame.h"

#include <QWidget>

#include <chrono>
#include <optional>

namespace platform {

/// The window of a panel that takes the keyboard: without a frame, above ordinary windows, not in the task
/// bar, with rounded corners and a line around it.
///
/// Where the desktop composites its windows, what lies outside of the corners is transparent and a shadow
/// falls around the panel; clicks on the shadow belong to what is beneath. Elsewhere the window is cut to the
/// panel's shape. A panel that is open follows when that changes, though it gets no shadow then. Frames are
/// the panel's own, without its shadow, in the toolkit's coordinates.
class FocusablePanel : public QWidget {
 public:
  /// Posted on the default NotificationCenter when the panel has lost the keyboard to another window; its
  /// object is notificationObject(). Who only holds the keyboard for a while, as a menu or a selection does,
  /// takes it from nobody.
  static constexpr char didResignKeyNotification[] = "NSWindowDidResignKeyNotification";

  FocusablePanel(const QSize& contentSize, int cornerRadius, const Color& outline);

  /// `view` fills the panel and belongs to it from now on; the keyboard goes to it when the panel appears.
  /// The panel's corners and its outline are none of its business.
  void setContentView(QWidget* view);

  /// Shows the panel above the others with the keyboard in it, moving within `duration` from its place plus
  /// `offset` to `frame`, and fading in where the desktop composites.
  void appear(const QRectF& frame, const QPointF& offset, std::chrono::milliseconds duration);

  /// Whether a point of the screen is on the panel. Its shadow isn't.
  [[nodiscard]] bool isAt(const QPoint& point) const;
  /// Whether another program holds the keyboard, which goes back to the panel afterwards.
  [[nodiscard]] bool isKeyboardHeld() const { return isHeld; }
  /// Whether what is beneath the panel is blurred, so that it may shine through.
  [[nodiscard]] bool isBackdropBlurred() const { return isBlurred; }

  [[nodiscard]] QVariant notificationObject() const;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEvent(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  /// Makes room for a shadow of that many points, and has everything fit.
  void setMargin(int margin);
  void fit();
  void moveTo(const QRectF& frame);
  void didShow();
  void begin();
  /// Whether the window manager has put the window where it was asked to.
  [[nodiscard]] bool hasLanded() const;
  void resignKey();
  [[nodiscard]] QRect contentRect() const;
  /// Whether the desktop shows what lies beneath the window where that is transparent.
  [[nodiscard]] bool isSeenThrough() const;

  const QSize contentSize;
  const int cornerRadius;
  int margin = 0;  // on each side, for the shadow
  QWidget* content = nullptr;
  PanelFrame* const frame;
  CompositingWatch compositing;
  QRectF target;
  QPointF startOffset;
  WorkItem landing;
  std::optional<Motion> motion;
  bool isShown = false;
  bool isHeld = false;
  bool isBlurred = false;
};

/// The same of the panel that the view is in; no where it is in none.
[[nodiscard]] bool isBackdropBlurred(const QWidget& view);

}  // namespace platform
