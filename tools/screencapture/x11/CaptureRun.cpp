#include "tools/screencapture/x11/CaptureRun.h"

#include "tools/screencapture/selection/SelectionUse.h"
#include "tools/screencapture/x11/Session.h"
#include "tools/screencapture/x11/WindowList.h"

namespace screencapture {

std::optional<platform::PngFile> captureInteractively(const Display& display, Language language) {
  const std::unique_ptr<Stage> stage = Stage::set(display, veil);
  if (!stage)
    return std::nullopt;
  Session session(*stage);
  SelectionUse use(*stage, session.setting(), shownWindows(display), language);
  session.run(use);
  stage->clear();
  const Selection& selection = use.result();
  if (selection.outcome() == Outcome::Cancelled)
    return std::nullopt;
  const std::optional<Rectangle> part = selection.selected();
  auto png = part && !display.isLost() ? stage->frozen.encode(*part) : std::nullopt;
  if (!png)
    complain(display, "the picture can't be fetched");
  return png;
}

}  // namespace screencapture
