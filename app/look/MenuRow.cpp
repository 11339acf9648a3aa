#include "app/look/MenuRow.h"

#include "app/look/ControlPainting.h"
#include "app/look/LookColors.h"
#include "platform/desktop/Symbols.h"

#include <QPainter>
#include <QStyleOptionMenuItem>

namespace sorrel::MenuRow {
namespace {

constexpr int highlightInset = 5;
constexpr qreal highlightRadius = 4;
constexpr int textInset = 14;  // from the sheet's edge
constexpr int rowPadding = 5;  // above and below the text
constexpr int separatorHeight = 9;
constexpr int separatorInset = 10;
constexpr int sectionTextSize = 11;
constexpr int sectionTitleHeight = 20;
constexpr int keysGap = 28;
constexpr int checkSide = 12;
constexpr int checkColumn = checkedTitleInset - textInset;
constexpr int iconSide = 16;
constexpr int iconColumn = iconSide + 8;
constexpr int arrowWidth = 4;
constexpr int arrowColumn = 22;

/// What lies before the title.
int leadingWidth(const QStyleOptionMenuItem& row) {
  return (row.menuHasCheckableItems ? checkColumn : 0) + (row.maxIconWidth > 0 ? iconColumn : 0);
}

bool isHighlighted(const QStyleOptionMenuItem& row) {
  return row.state.testFlag(QStyle::State_Selected) && row.state.testFlag(QStyle::State_Enabled);
}

QColor inkOf(const QStyleOptionMenuItem& row, const platform::Color& plain) {
  return ControlColors(row)(isHighlighted(row) ? LookColors::onAccent : plain);
}

/// Of what a separator with a title begins.
QFont sectionFont(const QStyleOptionMenuItem& row) {
  QFont font = row.font;
  font.setPixelSize(sectionTextSize);
  font.setWeight(QFont::DemiBold);
  return font;
}

void paintSeparator(QPainter& painter, const QStyleOptionMenuItem& row) {
  QRect area = row.rect;
  if (!row.text.isEmpty()) {
    const QRect title = area.adjusted(textInset, separatorHeight, -textInset, 0);
    area.setHeight(separatorHeight);
    painter.save();
    painter.setFont(sectionFont(row));
    painter.setPen(ControlColors(row)(LookColors::secondaryLabel));
    painter.drawText(title, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, row.text);
    painter.restore();
  }
  painter.fillRect(
      QRectF(area.left() + separatorInset, area.center().y(), area.width() - 2 * separatorInset, 1),
      AppColors::separator.resolved(platform::appearanceOf(row.palette)));
}

}  // namespace

QSize size(const QStyleOptionMenuItem& row, const QSize& title) {
  if (row.menuItemType == QStyleOptionMenuItem::Separator)
    return row.text.isEmpty()
               ? QSize(2 * separatorInset, separatorHeight)
               : QSize(textInset + QFontMetrics(sectionFont(row)).horizontalAdvance(row.text) + textInset,
                       separatorHeight + sectionTitleHeight);
  const int height = std::max(row.fontMetrics.height(), row.maxIconWidth > 0 ? iconSide : 0) + 2 * rowPadding;
  int width = textInset + leadingWidth(row) + title.width() + textInset;
  if (row.text.contains(u'\t'))
    width += keysGap;
  if (row.menuItemType == QStyleOptionMenuItem::SubMenu)
    width += arrowColumn;
  return {width, height};
}

void paint(QPainter& painter, const QStyleOptionMenuItem& row) {
  if (row.menuItemType == QStyleOptionMenuItem::Separator) {
    paintSeparator(painter, row);
    return;
  }
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (isHighlighted(row)) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ControlColors(row)(AppColors::accent));
    painter.drawRoundedRect(row.rect.adjusted(highlightInset, 0, -highlightInset, 0), highlightRadius,
                            highlightRadius);
  }
  const QColor ink = inkOf(row, LookColors::label);
  QRect place = row.rect.adjusted(textInset, 0, -textInset, 0);
  if (row.menuHasCheckableItems) {
    if (row.checked)
      platform::drawSymbol(painter, QRectF(place.left(), place.top(), checkSide, place.height()),
                           QStringLiteral("checkmark"), {ink});
    place.setLeft(place.left() + checkColumn);
  }
  if (row.maxIconWidth > 0) {
    row.icon.paint(&painter, QRect(place.left(), place.top(), iconSide, place.height()), Qt::AlignCenter,
                   row.state.testFlag(QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    place.setLeft(place.left() + iconColumn);
  }
  if (row.menuItemType == QStyleOptionMenuItem::SubMenu)
    drawArrowHead(painter, QRectF(place.right() - arrowWidth, place.top(), arrowWidth, place.height()), 0,
                  ink);
  constexpr int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic;
  painter.setFont(row.font);
  painter.setPen(ink);
  painter.drawText(place, flags | Qt::AlignLeft, row.text.section(u'\t', 0, 0));
  painter.setPen(inkOf(row, LookColors::secondaryLabel));
  painter.drawText(place, flags | Qt::AlignRight, row.text.section(u'\t', 1));
  painter.restore();
}

void paintScroller(QPainter& painter, const QStyleOptionMenuItem& scroller) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr qreal up = -90, down = 90;
  drawArrowHead(painter, scroller.rect, scroller.state.testFlag(QStyle::State_DownArrow) ? down : up,
                ControlColors(scroller)(LookColors::secondaryLabel));
  painter.restore();
}

}  // namespace sorrel::MenuRow
