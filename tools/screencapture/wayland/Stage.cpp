#include "tools/screencapture/wayland/Stage.h"

#include "tools/screencapture/wayland/Screencopy.h"

#include <cstdio>

namespace screencapture::wayland {

namespace {

using Clock = std::chrono::steady_clock;

// For the copies of all outputs. One that is asleep would let us wait for ever.
constexpr std::chrono::seconds configurePatience{3};

std::optional<std::vector<Picture>> copyOutputs(Display& display, const Screencopy& copies) {
  const auto deadline = Clock::now() + configurePatience;
  while (copies.progress() == Screencopy::Progress::Waiting) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0 || !display.handleEvents(left))
      return std::nullopt;
  }
  return copies.progress() == Screencopy::Progress::Done ? copies.pictures() : std::nullopt;
}

}  // namespace

Stage::Stage(Display& used) : display(used), overlay(used), input(used, overlay) {
}

std::unique_ptr<Stage> Stage::copy(Display& display, const std::optional<Color>& veil) {
  if (!display.screencopy)
    return nullptr;
  const Screencopy copies(display);
  std::unique_ptr<Stage> stage(new Stage(display));
  auto pictures = copyOutputs(display, copies);
  if (!pictures) {
    complain(display, "the screen can't be copied");
    return nullptr;
  }
  stage->show(std::move(*pictures), veil);
  return stage;
}

std::unique_ptr<Stage> Stage::of(Display& display, std::vector<Picture> pictures,
                                 const std::optional<Color>& veil) {
  std::unique_ptr<Stage> stage(new Stage(display));
  stage->show(std::move(pictures), veil);
  return stage;
}

void Stage::show(std::vector<Picture> pictures, const std::optional<Color>& veil) {
  std::vector<OutputShape> shapes;
  for (std::size_t i = 0; i < pictures.size(); ++i)
    shapes.push_back({display.outputs[i]->logical, pictures[i].size()});
  screen.emplace(Layout::of(shapes), std::move(pictures));
  overlay.show(*screen, veil);
}

void Stage::clear() {
  input.feed(nullptr);
  overlay.hide();
  wl_display_flush(display.connection());
}

void Stage::paint(std::span<const Rectangle> parts, const Layers& layers) {
  overlay.paint(parts, layers);
}

void Stage::setCursor(const Artwork& look) {
  input.setCursor(look, screen->layout.scale);
}

std::optional<std::vector<std::uint32_t>> Stage::pixels(const Rectangle& part) const {
  return screen->pixels(part);
}

Setting Stage::setting() const {
  const Layout& layout = screen->layout;
  const Rectangle& first = layout.places.front();
  return {layout.screen,
          layout.places,
          Metrics::at(layout.scale),
          {first.x + first.width / 2, first.y + first.height / 2}};
}

std::vector<Rectangle> Stage::onScreen(const std::vector<Rectangle>& parts) const {
  std::vector<Rectangle> logical, seen;
  for (const auto& output : display.outputs)
    logical.push_back(output->logical);
  for (const Rectangle& part : parts)
    if (const Rectangle shown = wayland::onScreen(part, logical, screen->layout); !shown.isEmpty())
      seen.push_back(shown);
  return seen;
}

void complain(const Display& display, const char* reason) {
  std::fprintf(stderr, "screencapture: %s\n", display.isLost() ? "lost the compositor" : reason);
}

}  // namespace screencapture::wayland
