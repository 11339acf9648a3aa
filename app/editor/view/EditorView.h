#pragma once

#include "platform/base/MainQueue.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace sorrel {

class EditorModel;

/// The whole content of the editor's window. It owns the document and shares its life; closed by the user, it
/// holds hardly more than that.
class EditorView : public QWidget {
 public:
  /// `onClose` asks the owner to close the window.
  EditorView(std::unique_ptr<EditorModel> model, std::function<void()> onClose, QWidget* parent = nullptr);
  ~EditorView() override;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  const std::unique_ptr<EditorModel> model;
  const std::function<void()> onClose;
  platform::WorkItem leavingScreen;
};

}  // namespace sorrel
