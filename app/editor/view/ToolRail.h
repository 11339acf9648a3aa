#pragma once

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/ModelWatch.h"

#include <QWidget>

#include <vector>

class QShortcut;

namespace sorrel {

class ChoiceButton;
class SymbolButton;

/// The tools in a column at the editor's left, and below them the button that takes back.
class ToolRail : public QWidget {
 public:
  static constexpr int width = 56;

  /// `onSelect` hears of each click on a tool, also on the one that is chosen.
  ToolRail(EditorModel& model, const std::function<void(EditorModel::Tool)>& onSelect, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void addUndo();
  void refresh();
  void showTexts();

  EditorModel& model;
  std::vector<ChoiceButton*> tools;
  SymbolButton* undo = nullptr;
  QShortcut* undoKeys = nullptr;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
