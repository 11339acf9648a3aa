#pragma once

#include "platform/base/MainQueue.h"
#include "platform/input/LayoutSwitch.h"
#include "platform/input/X11KeyboardWatch.h"

namespace platform {

/// Reads the server's keymap, and reads it again when that has changed.
class X11LayoutSwitch : public LayoutSwitch {
 public:
  /// The connection is the application's and must outlive this object.
  explicit X11LayoutSwitch(xcb_connection_t* connection);

 private:
  void read();

  xcb_connection_t* const connection;
  const X11KeyboardWatch watch;
  WorkItem firstReading;
};

}  // namespace platform
