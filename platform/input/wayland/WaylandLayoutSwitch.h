#pragma once

#include "platform/base/MainQueue.h"
#include "platform/input/LayoutSwitch.h"

namespace platform {

/// Reads the compositor's keymap, and reads it again when that has changed.
class WaylandLayoutSwitch : public LayoutSwitch {
 public:
  WaylandLayoutSwitch();

 private:
  void read();

  WorkItem reading;
  Subscription change;
};

}  // namespace platform
