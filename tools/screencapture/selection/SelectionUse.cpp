#include "tools/screencapture/selection/SelectionUse.h"

#include "tools/screencapture/selection/Painting.h"

namespace screencapture {

SelectionUse::SelectionUse(Canvas& shownOn, Setting begun, std::optional<std::vector<Rectangle>> windows,
                           Language spoken)
    : Use(shownOn, std::move(begun)),
      hintText{spoken, windows ? WindowChoice::Offered : WindowChoice::Missing},
      selection(setting.screen, std::move(windows), setting.pointer) {
  showCursor(shown.mode);
}

bool SelectionUse::draw() {
  const std::optional<Rectangle> part = selection.selected();
  Scene scene = sceneOf(selection, setting.monitors, setting.metrics,
                        part ? std::optional(canvas.sizeOf(*part)) : std::nullopt);
  if (!start) {
    start = Clock::now();
    hint.emplace(hintText, nearest(setting.monitors, selection.pointer()), setting.metrics);
  }
  if (selection.isDragging())
    hint.reset();  // who drags has got by without it
  if (hint)
    scene.hint = hint->at(sinceStart());
  if (scene == shown)
    return false;
  if (scene.mode != shown.mode)
    showCursor(scene.mode);
  const std::vector<Rectangle> changed = difference(shown, scene, setting.metrics);
  shown = std::move(scene);
  canvas.paint(changed, layers());
  return true;
}

void SelectionUse::repaint(const Rectangle& part) {
  canvas.paint({&part, 1}, layers());
}

std::optional<Use::Duration> SelectionUse::nextChange() const {
  return hint ? Hint::nextChange(sinceStart()) : std::nullopt;
}

Use::Duration SelectionUse::sinceStart() const {
  return std::chrono::duration_cast<Duration>(Clock::now() - *start);
}

Layers SelectionUse::layers() const {
  const Metrics& metrics = setting.metrics;
  Layers layers;
  layers.fills = [this](const Rectangle& within) { return fillsOf(shown, within, setting.metrics); };
  if (shown.hint)
    layers.pieces.push_back({drawHint(hintText, metrics, shown.hint->opacity), shown.hint->place});
  if (shown.label)
    layers.pieces.push_back({drawLabel(shown.label->text, metrics), shown.label->place});
  return layers;
}

void SelectionUse::showCursor(Mode mode) {
  canvas.setCursor(mode == Mode::Window ? drawCamera(setting.metrics) : drawCrosshair(setting.metrics));
}

}  // namespace screencapture
