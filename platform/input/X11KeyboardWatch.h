#pragma once

#include "platform/base/MainQueue.h"

#include <QAbstractNativeEventFilter>

#include <functional>

struct xcb_connection_t;

namespace platform {

/// Tells when an X server's keymap or modifier map has changed, or another keyboard has taken over. The
/// toolkit has asked the server to be told. Main thread only.
class X11KeyboardWatch : private QAbstractNativeEventFilter {
 public:
  /// The connection is the application's. A change comes as a burst of events, after which `onChange` is
  /// called once, from the event loop.
  X11KeyboardWatch(xcb_connection_t* connection, std::function<void()> onChange);
  X11KeyboardWatch(const X11KeyboardWatch&) = delete;
  X11KeyboardWatch& operator=(const X11KeyboardWatch&) = delete;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  const std::function<void()> onChange;
  int xkbFirstEvent = -1;  // -1 where the server lacks the extension
  WorkItem telling;
};

}  // namespace platform
