#include "app/editor/view/PopoverTiming.h"

namespace sorrel {

PopoverTiming::PopoverTiming(std::function<void(Change)> handler) : onChange(std::move(handler)) {
}

void PopoverTiming::show() {
  setVisible(true, Change::shown);
  scheduleHide();
}

void PopoverTiming::keep() {
  hide.cancel();
  setVisible(true, Change::shown);
}

void PopoverTiming::scheduleHide() {
  hide.cancel();
  if (!isWorkElsewhere)
    hide =
        platform::MainQueue::main().asyncAfter(delay, [this] { setVisible(false, Change::hiddenByItself); });
}

void PopoverTiming::hideNow() {
  hide.cancel();
  setVisible(false, Change::hiddenNow);
}

void PopoverTiming::beginWorkElsewhere() {
  isWorkElsewhere = true;
  keep();
}

void PopoverTiming::endWorkElsewhere() {
  isWorkElsewhere = false;
  scheduleHide();
}

void PopoverTiming::setVisible(bool next, Change change) {
  if (next == visible)
    return;
  visible = next;
  onChange(change);
}

}  // namespace sorrel
