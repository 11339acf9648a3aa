#include "tools/screencapture/x11/ColorPickRun.h"

#include "tools/screencapture/selection/ColorPick.h"
#include "tools/screencapture/selection/Magnifier.h"
#include "tools/screencapture/x11/Session.h"

namespace screencapture {

namespace {

/// The magnifier on the screen.
class ColorPickSession final : public Session {
 public:
  explicit ColorPickSession(Stage& set) : Session(set), pick(monitors, pointerAtStart), magnifier(metrics) {
    stage.input.setCursor(stage.overlay->makeCursor(drawCrosshair(metrics)));
  }

  ColorPick& result() { return pick; }

 private:
  Gestures& gestures() override { return pick; }

  bool draw() override {
    const Point pixel = pick.pixel();
    if (pixel == shownPixel)
      return false;
    const auto around = stage.frozen.pixels(Magnifier::sourceAround(pixel));
    if (!around)
      return false;
    shownPixel = pixel;
    const Rectangle before = shown.place;
    shown = {magnifier.draw(*around), magnifier.placeFor(pixel, pick.monitor())};
    const Rectangle changed[] = {before, shown.place};
    stage.overlay->paint(changed, layers());
    return true;
  }

  void repaint(const Rectangle& part) override { stage.overlay->paint({&part, 1}, layers()); }

  [[nodiscard]] Layers layers() const {
    return {[](const Rectangle&) { return std::vector<Fill>(); }, {shown}};
  }

  ColorPick pick;
  const Magnifier magnifier;
  std::optional<Point> shownPixel;
  Layers::Piece shown;
};

}  // namespace

std::optional<std::uint32_t> pickColor(const Display& display) {
  const std::unique_ptr<Stage> stage = Stage::set(display, std::nullopt);
  if (!stage)
    return std::nullopt;
  ColorPickSession session(*stage);
  session.run();
  stage->clear();
  const Point pixel = session.result().pixel();
  if (session.result().outcome() == Outcome::Cancelled)
    return std::nullopt;
  const auto color = stage->frozen.pixels({pixel.x, pixel.y, 1, 1});
  if (color)
    return color->front() & 0xffffff;
  complain(display, "the color can't be fetched");
  return std::nullopt;
}

}  // namespace screencapture
