#include "app/editor/view/EditorView.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"

#include <QHBoxLayout>

namespace sorrel {

EditorView::EditorView(std::unique_ptr<EditorModel> opened, std::function<void()> close, QWidget* parent)
    : QWidget(parent), model(std::move(opened)), onClose(std::move(close)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new Canvas(*model, this), 1);
}

EditorView::~EditorView() = default;

}  // namespace sorrel
