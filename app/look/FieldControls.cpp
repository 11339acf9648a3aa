#include "app/look/FieldControls.h"

#include "app/look/ButtonControls.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"
#include "app/look/MenuRow.h"

#include <QPainter>
#include <QStyleOptionComboBox>

namespace sorrel::FieldControls {
namespace {

constexpr int arrowRoom = 22;
constexpr int iconGap = 6;

}  // namespace

void paintLineEdit(QPainter& painter, const QStyleOption& field) {
  const ControlColors colors(field);
  const QRectF area = onWholePixels(painter, field.rect);
  const bool hasFocus = field.state.testFlag(QStyle::State_HasFocus);
  const bool isHovered = field.state.testFlag(QStyle::State_MouseOver);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  fillRounded(painter, area, controlRadius, colors(LookColors::field));
  if (hasFocus)
    drawFocusRing(painter, area, colors(AppColors::accent), controlRadius);
  else
    strokeRounded(painter, area, controlRadius,
                  colors(isHovered ? LookColors::fieldBorderHovered : LookColors::fieldBorder),
                  hairline(painter));
  painter.restore();
}

QSize comboBoxSize(const QSize& contents) {
  return {contents.width() + padding + 3 + arrowRoom,
          std::max(ButtonControls::height, contents.height() + 8)};
}

QRect comboBoxText(const QStyleOptionComboBox& box) {
  return QStyle::visualRect(box.direction, box.rect, box.rect.adjusted(padding + 2, 1, -arrowRoom, -1));
}

QRect comboBoxArrow(const QStyleOptionComboBox& box) {
  return QStyle::visualRect(box.direction, box.rect,
                            box.rect.adjusted(box.rect.width() - arrowRoom, 0, 0, 0));
}

QRect comboBoxList(const QStyleOptionComboBox& box) {
  const int before = MenuRow::checkedTitleInset - (comboBoxText(box).left() - box.rect.left());
  return box.rect.adjusted(-before, 0, padding, 0);
}

void paintComboBox(QPainter& painter, const QStyleOptionComboBox& box) {
  const ControlColors colors(box);
  if (box.editable) {
    paintLineEdit(painter, box);
  } else {
    const bool isHovered =
        box.state.testFlag(QStyle::State_MouseOver) && box.state.testFlag(QStyle::State_Enabled);
    const QRectF area = onWholePixels(painter, box.rect);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    fillRounded(painter, area, controlRadius,
                colors.ground(isHovered, box.state.testFlag(QStyle::State_On) ||
                                             box.state.testFlag(QStyle::State_Sunken)));
    if (showsKeyboardFocus(box))
      drawFocusRing(painter, area, colors(AppColors::accent), controlRadius);
    painter.restore();
  }
  // Up and down: the list opens over the box.
  constexpr double apart = 4, up = -90, down = 90;
  const QRectF arrow(comboBoxArrow(box));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (box.editable) {
    drawArrowHead(painter, arrow, down, colors(LookColors::secondaryLabel));
  } else {
    painter.translate(arrow.center());
    painter.scale(0.8, 0.8);
    const QRectF middle(-5, -5, 10, 10);
    drawArrowHead(painter, middle.translated(0, -apart), up, colors(LookColors::secondaryLabel));
    drawArrowHead(painter, middle.translated(0, apart), down, colors(LookColors::secondaryLabel));
  }
  painter.restore();
}

void paintComboBoxLabel(QPainter& painter, const QStyleOptionComboBox& box) {
  if (box.editable)
    return;  // the field shows it
  QRect place = comboBoxText(box);
  painter.save();
  if (!box.currentIcon.isNull()) {
    const QRect icon(place.topLeft(), QSize(box.iconSize.width(), place.height()));
    box.currentIcon.paint(&painter, icon, Qt::AlignCenter,
                          box.state.testFlag(QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    place.setLeft(icon.right() + 1 + iconGap);
  }
  painter.setPen(ControlColors(box)(LookColors::label));
  painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   box.fontMetrics.elidedText(box.currentText, Qt::ElideRight, place.width()));
  painter.restore();
}

}  // namespace sorrel::FieldControls
