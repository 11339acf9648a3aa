#include "tools/screencapture/x11/ColorPickRun.h"

#include "tools/screencapture/selection/ColorPickUse.h"
#include "tools/screencapture/x11/Session.h"

namespace screencapture {

std::optional<std::uint32_t> pickColor(const Display& display) {
  const std::unique_ptr<Stage> stage = Stage::set(display, std::nullopt);
  if (!stage)
    return std::nullopt;
  Session session(*stage);
  ColorPickUse use(*stage, session.setting());
  session.run(use);
  stage->clear();
  const ColorPick& pick = use.result();
  if (pick.outcome() == Outcome::Cancelled)
    return std::nullopt;
  const auto color = stage->frozen.pixels({pick.pixel().x, pick.pixel().y, 1, 1});
  if (color)
    return color->front() & 0xffffff;
  complain(display, "the color can't be fetched");
  return std::nullopt;
}

}  // namespace screencapture
