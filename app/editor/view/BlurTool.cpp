#include "app/editor/view/BlurTool.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"

#include <utility>

namespace sorrel {
namespace {

constexpr double areaCornerRadius = 2;  // of the guide

/// The rectangles along a rectangle's sides.
std::vector<QRectF> sidesOf(const QRectF& rectangle) {
  const auto around = [](const QPointF& from, const QPointF& to) {
    return QRectF(from, to).adjusted(-guideReach, -guideReach, guideReach, guideReach);
  };
  return {around(rectangle.topLeft(), rectangle.topRight()),
          around(rectangle.topRight(), rectangle.bottomRight()),
          around(rectangle.bottomLeft(), rectangle.bottomRight()),
          around(rectangle.topLeft(), rectangle.bottomLeft())};
}

}  // namespace

BlurTool::BlurTool(EditorModel& document, Canvas& shownOn) : model(document), canvas(shownOn) {
  settings = model.observe([this](EditorModel::Field field) {
    if (field == &model.blurApply || field == &model.blurBrushWidth || field == &model.displaySize)
      settingsUpdate = platform::MainQueue::main().asyncAfter({}, [this] { updateGuide(); });
  });
}

void BlurTool::pressed(const QPointF& place) {
  start = place;
  dragged(place);
}

void BlurTool::dragged(const QPointF& place) {
  if (model.blurApply == BlurApply::brush)
    model.extendBlurBrush(place);
  else
    model.currentBlurRect = QRectF(start, place).normalized();
  updateGuide();
}

void BlurTool::released() {
  model.commitBlur();
  updateGuide();
}

void BlurTool::hovered(const std::optional<QPointF>& place) {
  hoverLocation = place;
  updateGuide();
}

void BlurTool::left() {
  update(std::exchange(shown, {}));
}

void BlurTool::update(const std::vector<Line>& lines) {
  for (const Line& line : lines)
    for (const QRectF& part : line.bounds)
      canvas.updateOver(part);
}

std::vector<BlurTool::Line> BlurTool::guide() const {
  std::vector<Line> lines;
  if (model.blurApply == BlurApply::brush) {
    const auto& stroke = model.currentBlurStroke.get();
    const std::optional<QPointF> center = stroke && !stroke->isEmpty() ? stroke->last() : hoverLocation;
    if (!center)
      return {};
    Line& brush = lines.emplace_back();
    brush.center = *center;
    brush.diameter = model.blurBrushWidth;
    const double reach = brush.diameter / 2 + guideReach;
    brush.bounds = {QRectF(*center - QPointF(reach, reach), *center + QPointF(reach, reach))};
  } else if (const auto& area = model.currentBlurRect.get()) {
    Line& frame = lines.emplace_back();
    frame.path.addRoundedRect(*area, areaCornerRadius, areaCornerRadius);
    frame.bounds = sidesOf(*area);
  } else if (hoverLocation) {
    const QSizeF size = model.displaySize;
    for (const QLineF& across : {QLineF(hoverLocation->x(), 0, hoverLocation->x(), size.height()),
                                 QLineF(0, hoverLocation->y(), size.width(), hoverLocation->y())}) {
      Line& line = lines.emplace_back();
      line.emphasis = Emphasis::Plain;
      line.path.moveTo(across.p1());
      line.path.lineTo(across.p2());
      line.bounds = {
          QRectF(across.p1(), across.p2()).adjusted(-guideReach, -guideReach, guideReach, guideReach)};
    }
  }
  return lines;
}

void BlurTool::updateGuide() {
  if (model.tool != EditorModel::Tool::blur)
    return;
  left();
  shown = guide();
  update(shown);
}

void BlurTool::paintOver(QPainter& painter, double) const {
  for (const Line& line : shown)
    if (line.diameter > 0)
      circle.paint(painter, line.center, line.diameter);
    else
      strokeGuide(painter, line.path, line.emphasis);
}

}  // namespace sorrel
