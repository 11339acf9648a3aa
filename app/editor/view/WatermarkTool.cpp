#include "app/editor/view/WatermarkTool.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/Guide.h"
#include "app/editor/view/WatermarkPlacement.h"

#include <QLineF>

namespace sorrel {
namespace {

/// In display space; less is a click.
constexpr double leastDrag = 10;

}  // namespace

WatermarkTool::WatermarkTool(EditorModel& document, Canvas& shownOn) : model(document), canvas(shownOn) {
}

void WatermarkTool::left() {
  selected.reset();
}

std::optional<WatermarkTool::Mark> WatermarkTool::markAt(const QPointF& place) const {
  if (model.textRect().contains(place))
    return Mark::text;  // it lies above
  if (model.logoRect().contains(place))
    return Mark::logo;
  return std::nullopt;
}

bool WatermarkTool::isThere(Mark mark) const {
  return mark == Mark::text ? !model.textWM->isBlank() : model.logoWM->has_value();
}

QPointF WatermarkTool::centerOf(Mark mark) const {
  return mark == Mark::text ? model.textWM->center : model.logoWM.get()->center;
}

QSizeF WatermarkTool::sizeOf(Mark mark) const {
  return mark == Mark::text ? textWatermarkDisplaySize(model) : model.logoDisplaySize();
}

void WatermarkTool::moveTo(Mark mark, const QPointF& center) {
  canvas.carryMarks();
  if (mark == Mark::text)
    model.textWM.change([&](TextWatermark& text) { text.center = center; });
  else
    model.logoWM.change([&](auto& logo) { logo->center = center; });
}

void WatermarkTool::pressed(const QPointF& place) {
  selected = markAt(place);
  if (!selected)
    return;
  drag = Drag{.mark = *selected, .start = place, .startCenter = {}};
  canvas.updateCursor();
}

void WatermarkTool::dragged(const QPointF& place) {
  if (!drag || !isThere(drag->mark))
    return;
  if (!drag->startCenter) {
    if (QLineF(drag->start, place).length() < leastDrag)
      return;
    drag->startCenter = centerOf(drag->mark);
  }
  const Snap snap =
      applySnap(*drag->startCenter + place - drag->start, sizeOf(drag->mark), model.displaySize);
  moveTo(drag->mark, snap.center);
  showGuides(snap);
}

void WatermarkTool::released() {
  drag.reset();
  showGuides({});
}

void WatermarkTool::doublePressed(const QPointF& place) {
  if (markAt(place) == Mark::text)
    beginTextEditing(model);
  else
    pressed(place);
}

bool WatermarkTool::movedBy(const QPointF& step) {
  if (!selected || !isThere(*selected))
    return false;
  moveTo(*selected, centerOf(*selected) + step);
  return true;
}

QCursor WatermarkTool::cursorAt(const QPointF& place) const {
  if (drag)
    return Qt::ClosedHandCursor;
  return markAt(place) ? Qt::OpenHandCursor : Qt::ArrowCursor;
}

void WatermarkTool::showGuides(const Snap& snap) {
  if (snapGuideV == snap.guideV && snapGuideH == snap.guideH)
    return;
  updateGuides();
  snapGuideV = snap.guideV;
  snapGuideH = snap.guideH;
  updateGuides();
}

void WatermarkTool::updateGuides() {
  const QSizeF size = model.displaySize;
  if (snapGuideV)
    canvas.updateOver({*snapGuideV - guideReach, 0, 2 * guideReach, size.height()});
  if (snapGuideH)
    canvas.updateOver({0, *snapGuideH - guideReach, size.width(), 2 * guideReach});
}

void WatermarkTool::paintOver(QPainter& painter, double) const {
  const QSizeF size = model.displaySize;
  const auto stroke = [&painter](const QPointF& from, const QPointF& to) {
    QPainterPath path(from);
    path.lineTo(to);
    strokeGuide(painter, path, Emphasis::Emphasized);
  };
  if (snapGuideV)
    stroke({*snapGuideV, 0}, {*snapGuideV, size.height()});
  if (snapGuideH)
    stroke({0, *snapGuideH}, {size.width(), *snapGuideH});
}

}  // namespace sorrel
