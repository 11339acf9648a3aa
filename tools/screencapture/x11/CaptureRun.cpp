#include "tools/screencapture/x11/CaptureRun.h"

#include "tools/screencapture/selection/Painting.h"
#include "tools/screencapture/selection/Selection.h"
#include "tools/screencapture/x11/Session.h"
#include "tools/screencapture/x11/WindowList.h"

namespace screencapture {

namespace {

/// The selection on the screen.
class SelectionSession final : public Session {
 public:
  SelectionSession(Stage& set, Language spoken)
      : Session(set),
        language(spoken),
        selection(stage.display.size(), shownWindows(stage.display), pointerAtStart),
        hint(Hint(language, nearest(monitors, selection.pointer()), metrics)),
        crosshair(stage.overlay->makeCursor(drawCrosshair(metrics))),
        camera(stage.overlay->makeCursor(drawCamera(metrics))) {
    stage.input.setCursor(crosshair);
  }

  Selection& result() { return selection; }

 private:
  [[nodiscard]] Duration sinceStart() const {
    return std::chrono::duration_cast<Duration>(Clock::now() - start);
  }

  Gestures& gestures() override { return selection; }

  [[nodiscard]] std::optional<Duration> nextChange() const override {
    return hint ? Hint::nextChange(sinceStart()) : std::nullopt;
  }

  bool draw() override {
    Scene scene = sceneOf(selection, monitors, metrics);
    if (selection.isDragging())
      hint.reset();  // who drags has got by without it
    if (hint)
      scene.hint = hint->at(sinceStart());
    if (scene == shown)
      return false;
    if (scene.mode != shown.mode)
      stage.input.setCursor(scene.mode == Mode::Window ? camera : crosshair);
    const std::vector<Rectangle> changed = difference(shown, scene, metrics);
    shown = std::move(scene);
    stage.overlay->paint(changed, layers());
    return true;
  }

  void repaint(const Rectangle& part) override { stage.overlay->paint({&part, 1}, layers()); }

  [[nodiscard]] Layers layers() const {
    Layers layers;
    layers.fills = [this](const Rectangle& within) { return fillsOf(shown, within, metrics); };
    if (shown.hint)
      layers.pieces.push_back({drawHint(language, metrics, shown.hint->opacity), shown.hint->place});
    if (shown.label)
      layers.pieces.push_back({drawLabel(shown.label->text, metrics), shown.label->place});
    return layers;
  }

  const Language language;  // of the hint
  Selection selection;
  Scene shown;
  const Clock::time_point start = Clock::now();
  std::optional<Hint> hint;
  const xcb_cursor_t crosshair;
  const xcb_cursor_t camera;
};

}  // namespace

std::optional<platform::PngFile> captureInteractively(const Display& display, Language language) {
  const std::unique_ptr<Stage> stage = Stage::set(display, veil);
  if (!stage)
    return std::nullopt;
  SelectionSession session(*stage, language);
  session.run();
  stage->clear();
  const Selection& selection = session.result();
  if (selection.outcome() == Outcome::Cancelled)
    return std::nullopt;
  const std::optional<Rectangle> part = selection.selected();
  auto png = part && !display.isLost() ? stage->frozen.encode(*part) : std::nullopt;
  if (!png)
    complain(display, "the picture can't be fetched");
  return png;
}

}  // namespace screencapture
