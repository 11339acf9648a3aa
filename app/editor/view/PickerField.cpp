#include "app/editor/view/PickerField.h"

#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/SoftShadow.h"
#include "app/shell/AppColors.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace sorrel {

PickerField::PickerField(Look how, std::function<void(const QPointF&)> handler, QWidget* parent)
    : QWidget(parent), look(std::move(how)), onPick(std::move(handler)) {
  setFixedSize(look.field.grownBy({room, room, room, room}));
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
}

void PickerField::setThumb(const QPointF& place, const QColor& color) {
  thumb = place;
  thumbColor = color;
  update();
}

QRectF PickerField::fieldArea() const {
  return {QPointF(room, room), QSizeF(look.field)};
}

bool PickerField::event(QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
    update();
  return QWidget::event(event);
}

void PickerField::pick(const QPointF& point) {
  const QPointF inField = point - fieldArea().topLeft();
  onPick({std::clamp(inField.x() / look.field.width(), 0.0, 1.0),
          std::clamp(inField.y() / look.field.height(), 0.0, 1.0)});
}

void PickerField::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    pick(event->position());
}

void PickerField::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton))
    pick(event->position());
}

void PickerField::keyPressEvent(QKeyEvent* event) {
  const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? 0.1 : 0.01;
  QPointF by;
  switch (event->key()) {
    case Qt::Key_Left:
      by.setX(-step);
      break;
    case Qt::Key_Right:
      by.setX(step);
      break;
    case Qt::Key_Up:
      by.setY(-step);
      break;
    case Qt::Key_Down:
      by.setY(step);
      break;
    default:
      return QWidget::keyPressEvent(event);
  }
  if (look.movesAcrossOnly)
    by = {by.x() - by.y(), 0};
  const QPointF next = thumb + by;
  onPick({std::clamp(next.x(), 0.0, 1.0), std::clamp(next.y(), 0.0, 1.0)});
}

void PickerField::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area = fieldArea();
  painter.save();
  painter.translate(area.topLeft());
  painter.setPen(Qt::NoPen);
  look.fill(painter, QRectF(QPointF(), area.size()));
  painter.restore();
  strokeRounded(painter, area, look.radius, QColor(255, 255, 255, 38), 1);

  QRectF knob(0, 0, look.thumb, look.thumb);
  knob.moveCenter(area.topLeft() + QPointF(thumb.x() * area.width(), look.movesAcrossOnly
                                                                         ? area.height() / 2
                                                                         : thumb.y() * area.height()));
  paintSoftShadow(painter, knob, look.thumb / 2, {2, 0, look.shadowOpacity});
  fillRounded(painter, knob, look.thumb / 2, thumbColor);
  strokeRounded(painter, knob, look.thumb / 2, Qt::white, 2);
  if (hasFocus())
    drawFocusRing(painter, area.adjusted(-3, -3, 3, 3), ControlColors(palette(), true)(AppColors::accent),
                  look.radius + 3);
}

}  // namespace sorrel
