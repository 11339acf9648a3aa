#include "app/editor/view/EditorView.h"

#include "app/editor/model/EditorModel.h"

namespace sorrel {

EditorView::EditorView(std::unique_ptr<EditorModel> opened, std::function<void()> close, QWidget* parent)
    : QWidget(parent), model(std::move(opened)), onClose(std::move(close)) {
}

EditorView::~EditorView() = default;

}  // namespace sorrel
