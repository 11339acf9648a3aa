#include "app/editor/view/EditorView.h"

#include "app/capture/Notifications.h"
#include "app/editor/view/BlurTool.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/CropTool.h"
#include "app/editor/view/EditorPalette.h"
#include "app/editor/view/OptionsPopover.h"
#include "app/editor/view/PenTool.h"
#include "app/editor/view/ToolRail.h"
#include "app/editor/view/TopBar.h"
#include "app/editor/view/WatermarkTool.h"
#include "app/editor/view/ZoomControls.h"
#include "app/shell/AppColors.h"
#include "platform/base/NotificationCenter.h"
#include "platform/system/FreeMemory.h"

#include <QHBoxLayout>
#include <QHideEvent>

namespace sorrel {
namespace {

constexpr platform::Color barDivider = EditorPalette::always(0x26ffffff);

QPalette editorPalette() {
  QPalette palette = platform::paletteOf(platform::Appearance::Dark, AppColors::accent);
  palette.setColor(QPalette::Window, EditorPalette::windowBG.resolved());
  return palette;
}

QWidget* dividerIn(QWidget* parent) {
  auto* const line = new QWidget(parent);
  line->setFixedHeight(1);
  line->setAutoFillBackground(true);
  line->setPalette(barDivider.resolved());
  return line;
}

}  // namespace

EditorView::EditorView(std::unique_ptr<EditorModel> opened, std::function<void()> close, QWidget* parent)
    : QWidget(parent), model(std::move(opened)), onClose(std::move(close)) {
  setPalette(editorPalette());
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* const row = new QHBoxLayout;
  row->setSpacing(0);
  auto* const rail = new ToolRail(
      *model, [this](EditorModel::Tool tool) { selectTool(tool); }, this);
  popover = new OptionsPopover(*model, this);
  auto* const canvas = new Canvas(*model, this);
  canvas->setTool(EditorModel::Tool::pen, std::make_unique<PenTool>(*model));
  canvas->setTool(EditorModel::Tool::blur, std::make_unique<BlurTool>(*model, *canvas));
  canvas->setTool(EditorModel::Tool::watermark, std::make_unique<WatermarkTool>(*model, *canvas));
  canvas->setTool(EditorModel::Tool::crop, std::make_unique<CropTool>(*model, *canvas));
  new ZoomControls(*canvas);
  row->addWidget(rail);
  row->addWidget(canvas, 1);
  column->addWidget(new TopBar(
      *model, onClose, [this] { save(); }, this));
  column->addWidget(dividerIn(this));
  column->addLayout(row, 1);
  popover->raise();
}

/// Its parts use the document to their end: a text that is being written loses the focus then.
EditorView::~EditorView() {
  qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
}

void EditorView::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous())
    return;  // only put away, and soon wanted again
  leavingScreen = platform::MainQueue::main().asyncAfter({}, [this] {
    // The document alone stays, and nothing that it was shown by.
    qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    destroy();
    platform::giveBackFreeMemory();
  });
}

void EditorView::selectTool(EditorModel::Tool tool) {
  PopoverTiming& timing = popover->timing();
  if (model->tool == tool && timing.isVisible()) {
    timing.hideNow();
    return;
  }
  model->tool = tool;
  timing.show();
}

/// What can't be saved closes too: there is a line in the log, and the file is as it was.
void EditorView::save() {
  if (model->save())
    platform::NotificationCenter::defaultCenter().post(
        QString::fromLatin1(Notifications::screenshotsChanged));
  onClose();
}

}  // namespace sorrel
