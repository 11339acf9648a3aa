#pragma once

#include "app/editor/model/EditorModel.h"
#include "tests/e2e/Sorrel.h"

namespace e2e {

/// The editor's window on the screen, where its parts are, and what is done with it. Areas and points are
/// pixels of the screen, on desktops of any scale.
class Editor {
 public:
  using Tool = sorrel::EditorModel::Tool;

  explicit Editor(Desktop& desktop);

  /// The window without its frame; absent while there is none.
  [[nodiscard]] std::optional<ScreenWindow> window() const;
  /// Waits until it is there, has the keyboard and stands still.
  ScreenWindow waitUntilOpen() const;
  void waitUntilClosed() const;

  /// Where a picture with so many pixels lies at zoom 1.
  [[nodiscard]] QRect picture(QSize pixels) const;
  [[nodiscard]] QPoint toolButton(Tool tool) const;
  [[nodiscard]] QPoint undoButton() const;
  [[nodiscard]] QPoint saveButton() const;

  /// Chooses the tool, and shows its options for as long as the pointer stays on them; or puts them away.
  void showOptions(Tool tool) const;
  void hideOptions(Tool tool) const;

  void moveTo(QPoint point) const;
  void click(QPoint point) const;
  void drag(const std::vector<QPoint>& points) const;
  /// Presses a key together with Ctrl.
  void command(int evdevCode) const;

 private:
  /// Points of the window, from its top left corner.
  [[nodiscard]] QPoint at(double x, double y) const;

  Desktop& desktop;
};

}  // namespace e2e
