#include "app/editor/view/EditorView.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/BlurTool.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/CropTool.h"
#include "app/editor/view/PenTool.h"
#include "platform/system/FreeMemory.h"

#include <QHBoxLayout>
#include <QHideEvent>

namespace sorrel {

EditorView::EditorView(std::unique_ptr<EditorModel> opened, std::function<void()> close, QWidget* parent)
    : QWidget(parent), model(std::move(opened)), onClose(std::move(close)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  auto* const canvas = new Canvas(*model, this);
  canvas->setTool(EditorModel::Tool::pen, std::make_unique<PenTool>(*model));
  canvas->setTool(EditorModel::Tool::blur, std::make_unique<BlurTool>(*model, *canvas));
  canvas->setTool(EditorModel::Tool::crop, std::make_unique<CropTool>(*model, *canvas));
  row->addWidget(canvas, 1);
}

EditorView::~EditorView() = default;

void EditorView::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous())
    return;  // only put away, and soon wanted again
  leavingScreen = platform::MainQueue::main().asyncAfter({}, [this] {
    destroy();  // what the window system and the toolkit hold for a window that may be shown again
    platform::giveBackFreeMemory();
  });
}

}  // namespace sorrel
