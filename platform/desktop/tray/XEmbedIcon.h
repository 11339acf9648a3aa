#pragma once

#include "platform/base/MainQueue.h"
#include "platform/desktop/tray/AccessibleIcon.h"
#include "platform/desktop/tray/TrayIcon.h"
#include "platform/desktop/tray/X11Picture.h"

#include <QAbstractNativeEventFilter>
#include <QSize>

#include <memory>
#include <xcb/xcb.h>

namespace platform {

/// The icon in an XEmbed tray: a window of our own that docks into the tray's, by the freedesktop System Tray
/// Protocol. It takes clicks at the release of the button, as a button does.
class XEmbedIcon : public TrayIcon, private QAbstractNativeEventFilter {
 public:
  /// Docks into the tray that has this window as its manager.
  XEmbedIcon(quint32 tray, Handlers handlers);
  ~XEmbedIcon() override;

  void setImage(const Image& image) override;
  void setToolTip(const QString& text) override;
  [[nodiscard]] std::optional<QRectF> frame() const override;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  bool handle(const xcb_generic_event_t& event);
  void describe();
  void press();
  void dock(quint32 tray);
  void draw();
  bool handlePointer(const xcb_generic_event_t& event);
  void clicked(const xcb_button_press_event_t& event);
  void showToolTipSoon();
  void hideToolTip();

  const Handlers handlers;
  xcb_connection_t* const connection;
  const X11Look look;
  QSize size;            // of the window, in device pixels
  const quint32 colors;  // the window's colormap
  const quint32 window;
  bool isGone = false;
  QIcon icon;
  QString toolTip;
  WorkItem toolTipDue;
  bool isToolTipShown = false;
  QPoint pressed{-1, -1};  // where a button was pressed last, in device pixels
  std::unique_ptr<X11Picture> picture;
  AccessibleIcon accessible;
};

}  // namespace platform
