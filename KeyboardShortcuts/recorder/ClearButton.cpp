#include "KeyboardShortcuts/recorder/ClearButton.h"

#include "KeyboardShortcuts/Strings.h"
#include "platform/desktop/Symbols.h"

#include <QPainter>

namespace KeyboardShortcuts {
namespace {

constexpr qreal symbolSide = 14;
constexpr int restingAlpha = 110, hoveredAlpha = 165, pressedAlpha = 215;

}  // namespace

ClearButton::ClearButton(QWidget* field) : QAbstractButton(field) {
  setFixedSize(side, side);
  setFocusPolicy(Qt::NoFocus);
  setCursor(Qt::ArrowCursor);
  setAttribute(Qt::WA_Hover);
  setToolTip(localizedString(QStringLiteral("clear_shortcut")));
  setAccessibleName(toolTip());
}

void ClearButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor ink = palette().color(QPalette::Text);
  ink.setAlpha(isDown() ? pressedAlpha : underMouse() ? hoveredAlpha : restingAlpha);
  QRectF place(0, 0, symbolSide, symbolSide);
  place.moveCenter(QRectF(rect()).center());
  platform::drawSymbol(painter, place, QStringLiteral("xmark.circle.fill"), {ink});
}

}  // namespace KeyboardShortcuts
