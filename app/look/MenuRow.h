#pragma once

#include <QSize>

class QPainter;
class QStyleOptionMenuItem;

/// The rows of a menu: a check mark or an icon, the title, and at the right the keys or a submenu's arrow.
namespace sorrel::MenuRow {

/// Above the first row and below the last, in points.
inline constexpr int edge = 5;
/// From the sheet's edge to the titles, in a menu that checks what holds.
inline constexpr int checkedTitleInset = 32;

/// The size of a row whose title, without the keys, takes `title`; the keys' own width comes on top.
[[nodiscard]] QSize size(const QStyleOptionMenuItem& row, const QSize& title);
/// Paints the row in the option's rectangle; the surface below it is there already.
void paint(QPainter& painter, const QStyleOptionMenuItem& row);
/// The arrow at the end of a menu that is higher than the screen.
void paintScroller(QPainter& painter, const QStyleOptionMenuItem& scroller);

}  // namespace sorrel::MenuRow
