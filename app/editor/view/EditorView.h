#pragma once

#include <QWidget>

#include <functional>
#include <memory>

namespace sorrel {

class EditorModel;

/// The whole content of the editor's window. It owns the document and shares its life.
class EditorView : public QWidget {
 public:
  /// `onClose` asks the owner to close the window.
  EditorView(std::unique_ptr<EditorModel> model, std::function<void()> onClose, QWidget* parent = nullptr);
  ~EditorView() override;

 private:
  const std::unique_ptr<EditorModel> model;
  const std::function<void()> onClose;
};

}  // namespace sorrel
