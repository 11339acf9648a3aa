#pragma once

#include "tools/screencapture/selection/Use.h"
#include "tools/screencapture/x11/Stage.h"

namespace screencapture {

/// Brings what the user does to a use of the tool on its stage.
class Session {
 public:
  explicit Session(Stage& stage);

  [[nodiscard]] const Setting& setting() const { return begun; }
  /// Returns when the gestures have come to their end or the connection is lost.
  void run(Use& use);

 private:
  void handle(const xcb_generic_event_t& event, Use& use);
  [[nodiscard]] int longestWait(const Use& use) const;
  void waitForServer() const;

  Stage& stage;
  const Setting begun;
  bool isGranted;
};

}  // namespace screencapture
