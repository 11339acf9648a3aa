#include "tests/e2e/Editor.h"

#include "app/editor/view/CanvasFit.h"

#include <linux/input-event-codes.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr double railWidth = 56;
constexpr double topBarHeight = 54 + 1;  // with the line below it
constexpr double railPadding = 12;
constexpr double railButton = 40;
constexpr double railPitch = 48;

}  // namespace

Editor::Editor(Desktop& owner) : desktop(owner) {
}

std::optional<ScreenWindow> Editor::window() const {
  const auto english = desktop.screen().find(u"Sorrel Editor"_s);
  return english ? english : desktop.screen().find(u"Sorrel 편집기"_s);
}

ScreenWindow Editor::waitUntilOpen() const {
  std::optional<ScreenWindow> found;
  until("the editor is there and has the keyboard", [&] {
    found = window();
    return found && desktop.screen().keyboardWindow() == found->id;
  });
  (void)desktop.screen().settledPicture();
  return *window();
}

void Editor::waitUntilClosed() const {
  until("the editor is closed", [this] { return !window(); });
}

QPoint Editor::at(double x, double y) const {
  const auto open = window();
  if (!open)
    throw std::runtime_error("there is no editor");
  return open->area.topLeft() + QPoint(qRound(x * desktop.scale()), qRound(y * desktop.scale()));
}

QRect Editor::picture(QSize pixels) const {
  const QSizeF points = QSizeF(window()->area.size()) / desktop.scale();
  const sorrel::CanvasFit fit{.area = points - QSizeF(railWidth, topBarHeight),
                              .ratio = desktop.scale(),
                              .displaySize = sorrel::Document::fitted(pixels),
                              .imagePixelSize = pixels,
                              .scrolled = {}};
  return fit.picture().translated(at(railWidth, topBarHeight));
}

QPoint Editor::toolButton(Tool tool) const {
  return at(railWidth / 2, topBarHeight + railPadding + railButton / 2 + railPitch * static_cast<int>(tool));
}

QPoint Editor::undoButton() const {
  const double height = window()->area.height() / desktop.scale();
  return at(railWidth / 2, height - railPadding - railButton / 2);
}

QPoint Editor::saveButton() const {
  const double width = window()->area.width() / desktop.scale();
  return at(width - 32, (topBarHeight - 1) / 2);
}

void Editor::showOptions(Tool tool) const {
  // A click on a tool that was chosen before might as well put them away.
  click(toolButton(tool == Tool::pen ? Tool::blur : Tool::pen));
  click(toolButton(tool));
  constexpr double optionsLeft = railWidth + 20;
  moveTo({at(optionsLeft, 0).x(), toolButton(tool).y()});
}

void Editor::hideOptions(Tool tool) const {
  showOptions(tool);
  click(toolButton(tool));
}

void Editor::moveTo(QPoint point) const {
  desktop.input().moveTo(point.x(), point.y());
}

void Editor::click(QPoint point) const {
  moveTo(point);
  desktop.input().clickButton(1);
}

void Editor::drag(const std::vector<QPoint>& points) const {
  moveTo(points.front());
  desktop.input().pressButton(1);
  for (const QPoint& point : points)
    moveTo(point);
  desktop.input().releaseButton(1);
}

void Editor::command(int evdevCode) const {
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().tapKey(evdevCode);
  desktop.input().releaseKey(KEY_LEFTCTRL);
}

}  // namespace e2e
