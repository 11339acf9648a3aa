#pragma once

#include "platform/base/MainQueue.h"
#include "platform/desktop/panel/CompositingWatch.h"
#include "platform/desktop/panel/PanelSurface.h"

#include <QObject>

namespace platform {

/// A window of the panel's size and its shadow's, placed by its position. Where the desktop doesn't composite
/// its windows it is cut to the panel's shape. Also what stands in where the window system is none that is
/// known.
class X11PanelSurface : public QObject, public PanelSurface {
 public:
  X11PanelSurface(QWidget& window, PanelSheet& sheet, Handlers handlers);

  void open(const QRectF& target, const std::optional<QRectF>& start) override;
  void moveTo(const QRectF& place, double opacity) override;
  [[nodiscard]] bool hasKeyboard() const override;
  [[nodiscard]] bool isKeyboardHeld() const override { return isHeld; }
  [[nodiscard]] bool isBackdropBlurred() const override { return isBlurred; }
  void handleNative(const QByteArray& eventType, const void* message) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Makes room for a shadow of that many points, and has everything fit.
  void setMargin(int margin);
  void fit();
  void move(const QRectF& place);
  void didShow();
  /// Whether the window manager has put the window where it was asked to.
  [[nodiscard]] bool hasLanded() const;
  /// Whether the desktop shows what lies beneath the window where that is transparent.
  [[nodiscard]] bool isSeenThrough() const;

  QWidget& window;
  PanelSheet& sheet;
  const Handlers handlers;
  CompositingWatch compositing;
  int margin = 0;  // on each side, for the shadow
  QRectF target;
  WorkItem landing;
  bool isShown = false;
  bool isHeld = false;
  bool isBlurred = false;
};

}  // namespace platform
