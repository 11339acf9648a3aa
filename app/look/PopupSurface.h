#pragma once

#include <QRect>

class QPainter;
class QWidget;

/// What menus and tooltips lie on: a rounded warm grey sheet with a hairline around it. Where the desktop
/// composites its windows the popup is translucent, with room for a shadow around the sheet; elsewhere its
/// window is cut to the sheet's shape.
namespace sorrel::PopupSurface {

/// Has the popup's window made for the sheet; call it before there is a window.
void prepare(QWidget& popup);
/// Call it when the popup is shown, and when it changes its size.
void fit(QWidget& popup);

/// The shadow's room on each side, in points; none where there is no shadow.
[[nodiscard]] int margin(const QWidget* popup);
/// The sheet, in the popup's coordinates.
[[nodiscard]] QRect sheet(const QWidget& popup);
void paint(QPainter& painter, const QWidget& popup);

}  // namespace sorrel::PopupSurface
