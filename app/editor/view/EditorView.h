#pragma once

#include "app/editor/model/EditorModel.h"
#include "platform/base/MainQueue.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace sorrel {

class OptionsPopover;

/// The whole content of the editor's window, dark on every desktop. It owns the document and shares its life;
/// closed by the user, it holds hardly more than that.
class EditorView : public QWidget {
 public:
  /// `onClose` asks the owner to close the window.
  EditorView(std::unique_ptr<EditorModel> model, std::function<void()> onClose, QWidget* parent = nullptr);
  ~EditorView() override;

  /// Chooses a tool, and shows its options; for the tool that is chosen, shows or hides them.
  void selectTool(EditorModel::Tool tool);

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void save();

  const std::unique_ptr<EditorModel> model;
  const std::function<void()> onClose;
  OptionsPopover* popover = nullptr;
  platform::WorkItem leavingScreen;
};

}  // namespace sorrel
