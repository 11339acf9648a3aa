#pragma once

#include "platform/desktop/Motion.h"
#include "platform/desktop/panel/PanelSheet.h"
#include "platform/desktop/panel/PanelSurface.h"

#include <QPointer>
#include <QWidget>

#include <chrono>
#include <memory>
#include <optional>

namespace platform {

/// The window of a panel that takes the keyboard: without a frame, above ordinary windows, not in the task
/// bar, with rounded corners and a line around it.
///
/// Where the desktop composites its windows, what lies outside of the corners is transparent and a shadow
/// falls around the panel; clicks on the shadow belong to what is beneath. Elsewhere the window is cut to the
/// panel's shape. A panel that is open follows when that changes, though it gets no shadow then. Frames are
/// the panel's own, without its shadow, in the toolkit's coordinates. The window may be larger than that: on
/// Wayland it is as large as the output.
class FocusablePanel : public QWidget {
 public:
  /// Posted on the default NotificationCenter when the panel has lost the keyboard to another window; its
  /// object is notificationObject(). Who only holds the keyboard for a while, as a menu or a selection does,
  /// takes it from nobody.
  static constexpr char didResignKeyNotification[] = "NSWindowDidResignKeyNotification";

  FocusablePanel(const QSize& contentSize, int cornerRadius, const Color& outline);
  ~FocusablePanel() override;

  /// `view` fills the panel and belongs to it from now on; the keyboard goes to it when the panel appears.
  /// The panel's corners and its outline are none of its business.
  void setContentView(QWidget* view) { sheet->setContent(view); }

  /// Shows the panel above the others with the keyboard in it, moving within `duration` from its place plus
  /// `offset` to `frame`, and fading in where the desktop composites.
  void appear(const QRectF& frame, const QPointF& offset, std::chrono::milliseconds duration);
  void setVisible(bool isVisible) override;

  /// Whether the panel stays while the user works in other windows, which then get the clicks beside it and
  /// the keyboard. Not so at first.
  void setStaying(bool isStaying) { surface->setStaying(isStaying); }

  /// While the user selects a part of the screen: that is done above the panel, wherever this lies.
  void setSelecting(bool isSelecting) { surface->setSelecting(isSelecting); }

  /// Whether a point of the screen is on the panel. Its shadow isn't.
  [[nodiscard]] bool isAt(const QPoint& point) const;
  /// Whether another program holds the keyboard, which goes back to the panel afterwards.
  [[nodiscard]] bool isKeyboardHeld() const { return surface->isKeyboardHeld(); }
  /// Whether what is beneath the panel is blurred, so that it may shine through.
  [[nodiscard]] bool isBackdropBlurred() const { return surface->isBackdropBlurred(); }

  [[nodiscard]] QVariant notificationObject() const;

 protected:
  bool event(QEvent* event) override;
  bool nativeEvent(const QByteArray& eventType, void* message, qintptr* result) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  friend class DragFromPanel;

  void resignKey();

  PanelSheet* const sheet;
  std::unique_ptr<PanelSurface> surface;
  std::optional<Motion> motion;
};

/// While it lives, what the user drags out of the panel that `view` is in can be dropped beside the panel.
/// The panel may go meanwhile, and `view` may be in none.
class DragFromPanel {
 public:
  explicit DragFromPanel(const QWidget* view);
  ~DragFromPanel();
  DragFromPanel(const DragFromPanel&) = delete;
  DragFromPanel& operator=(const DragFromPanel&) = delete;

  /// A program has taken it.
  void setTaken() { isTaken = true; }

 private:
  const QPointer<FocusablePanel> panel;
  bool isTaken = false;
};

/// The same of the panel that the view is in; no where it is in none.
[[nodiscard]] bool isBackdropBlurred(const QWidget& view);

}  // namespace platform
