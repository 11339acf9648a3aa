#include "tools/screencapture/wayland/Runs.h"

#include "tools/screencapture/selection/ColorPickUse.h"
#include "tools/screencapture/selection/SelectionUse.h"
#include "tools/screencapture/wayland/Session.h"

namespace screencapture::wayland {

namespace {

/// True where the gestures have taken something. Where they were cut short, that is said.
bool hasTaken(const Stage& stage, const Gestures& gestures) {
  if (gestures.outcome() == Outcome::Open)
    complain(stage.display, "the compositor took the selection away");
  return gestures.outcome() == Outcome::Taken;
}

}  // namespace

std::optional<platform::PngFile> captureInteractively(Display& display, Language language) {
  const std::unique_ptr<Stage> stage = Stage::set(display, veil);
  if (!stage)
    return std::nullopt;
  SelectionUse use(*stage, stage->setting(), {}, language);
  perform(*stage, use);
  stage->clear();
  const std::optional<Rectangle> part = use.result().selected();
  if (!hasTaken(*stage, use.result()) || !part)
    return std::nullopt;
  auto png = stage->frozen().encode(*part);
  if (!png)
    complain(display, "there is not enough memory");
  return png;
}

std::optional<std::uint32_t> pickColor(Display& display) {
  const std::unique_ptr<Stage> stage = Stage::set(display, std::nullopt);
  if (!stage)
    return std::nullopt;
  ColorPickUse use(*stage, stage->setting());
  perform(*stage, use);
  stage->clear();
  if (!hasTaken(*stage, use.result()))
    return std::nullopt;
  const Point pixel = use.result().pixel();
  return stage->frozen().pixels({pixel.x, pixel.y, 1, 1}).front() & 0xffffff;
}

}  // namespace screencapture::wayland
