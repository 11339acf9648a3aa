#pragma once

#include "platform/base/MainQueue.h"

#include <chrono>
#include <functional>

namespace sorrel {

/// When the options popover is there: it hides itself a while after the pointer has left it. It starts
/// visible, as yet without a deadline.
class PopoverTiming {
 public:
  enum class Change { shown, hiddenNow, hiddenByItself };

  static constexpr std::chrono::seconds delay{2};

  /// `onChange` hears when the popover is to appear or to go.
  explicit PopoverTiming(std::function<void(Change)> onChange);

  [[nodiscard]] bool isVisible() const { return visible; }

  void show();
  /// Shows it without a deadline.
  void keep();
  /// To hide after the delay, counted anew; never during work elsewhere.
  void scheduleHide();
  void hideNow();

  /// While the eyedropper is on the screen, or a menu or a file chooser of the popover's own, the pointer has
  /// better things to do than to lie on the popover.
  void beginWorkElsewhere();
  void endWorkElsewhere();

 private:
  void setVisible(bool next, Change change);

  const std::function<void(Change)> onChange;
  bool visible = true;
  bool isWorkElsewhere = false;
  platform::WorkItem hide;
};

}  // namespace sorrel
