#include "app/editor/view/CropTool.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/CropApplyButton.h"
#include "app/editor/view/CropOverlay.h"

namespace sorrel {
namespace {

Qt::CursorShape cursorFor(const std::optional<CropHandle>& handle) {
  using enum CropHandle;
  if (!handle)
    return Qt::ArrowCursor;
  switch (*handle) {
    case topRight:
    case bottomLeft:
      return Qt::SizeBDiagCursor;
    case topLeft:
    case bottomRight:
      return Qt::SizeFDiagCursor;
    case top:
    case bottom:
      return Qt::SizeVerCursor;
    case left:
    case right:
      return Qt::SizeHorCursor;
    case move:
      return Qt::OpenHandCursor;
  }
  return Qt::ArrowCursor;
}

}  // namespace

CropTool::CropTool(EditorModel& document, Canvas& shown)
    : model(document),
      canvas(shown),
      applyButton(new CropApplyButton([this] { apply(); }, shown.viewport())) {
  // The new size isn't in place yet.
  sizeChange = model.displaySize.observe(
      [this] { buttonUpdate = platform::MainQueue::main().asyncAfter({}, [this] { updateButton(); }); });
}

CropTool::~CropTool() = default;

QRectF CropTool::wholePicture() const {
  return {QPointF(), model.displaySize.get()};
}

void CropTool::chosen() {
  if (!cropRect)
    show(wholePicture());
}

void CropTool::left() {
  show(std::nullopt);
}

void CropTool::pressed(const QPointF& place) {
  const QRectF startRect = cropRect.value_or(wholePicture());
  const auto handle = cropHandle(place, startRect, canvas.canvasScale());
  drag = Drag{.handle = handle.value_or(CropHandle::move), .startRect = startRect, .start = place};
}

void CropTool::dragged(const QPointF& place) {
  if (drag)
    show(applyCropDrag(drag->handle, drag->startRect, place - drag->start, model.displaySize));
}

void CropTool::released() {
  drag.reset();
}

bool CropTool::movedBy(const QPointF& step) {
  if (cropRect && !drag)
    show(applyCropDrag(CropHandle::move, *cropRect, step, model.displaySize));
  return cropRect.has_value();
}

QCursor CropTool::cursorAt(const QPointF& place) const {
  return cursorFor(cropRect ? cropHandle(place, *cropRect, canvas.canvasScale()) : std::nullopt);
}

void CropTool::paintOver(QPainter& painter, double scale) const {
  if (cropRect)
    drawCropOverlay(painter, *cropRect, model.displaySize, scale);
}

void CropTool::show(const std::optional<QRectF>& next) {
  const QRectF before = cropRect.value_or(wholePicture());
  cropRect = next;
  // With the overlay all of the picture is dimmed or cleared; else only what the rectangle leaves or takes.
  const double reach = cropOverlayReach(canvas.canvasScale());
  const QRectF changed = drag && next ? before.united(*next) : wholePicture();
  canvas.updateOver(changed.adjusted(-reach, -reach, reach, reach));
  updateButton();
}

void CropTool::updateButton() {
  applyButton->setVisible(cropRect && isCropModified(*cropRect, model.displaySize));
}

void CropTool::apply() {
  if (!cropRect)
    return;
  drag.reset();
  model.applyCrop(*cropRect);
  show(wholePicture());
}

}  // namespace sorrel
