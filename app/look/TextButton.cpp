#include "app/look/TextButton.h"

#include "app/look/FocusRing.h"
#include "app/shell/AppColors.h"
#include "platform/desktop/Symbols.h"

#include <QPainter>

namespace sorrel {
namespace {

constexpr int symbolSide = 12;
constexpr int symbolGap = 4;
constexpr int cornerRadius = 4;
constexpr int hoveredGround = 26, pressedGround = 52;  // how much of the text's colour, of 255

}  // namespace

TextButton::TextButton(const TextStyle& textStyle, const QString& symbolName, QWidget* parent)
    : QAbstractButton(parent), style(textStyle), symbol(symbolName) {
  setFont(fontOf(style));
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
}

int TextButton::symbolWidth() const {
  return symbol.isEmpty() ? 0 : symbolSide + symbolGap;
}

QSize TextButton::sizeHint() const {
  return {symbolWidth() + fontMetrics().horizontalAdvance(text()) + 2 * margin + 1,
          fontMetrics().height() + 2 * margin};
}

QSize TextButton::minimumSizeHint() const {
  return symbol.isEmpty() ? sizeHint() : QSize(symbolWidth() + 40, sizeHint().height());
}

void TextButton::paintEvent(QPaintEvent*) {
  const auto appearance = platform::appearanceOf(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor color = style.color.resolved(appearance);
  if (underMouse()) {
    QColor ground = color;
    ground.setAlpha(isDown() ? pressedGround : hoveredGround);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    color.setAlpha(isDown() ? 255 : (color.alpha() + 255) / 2);  // towards the full colour
  }
  QRect place = rect().adjusted(margin, 0, -margin, 0);
  if (!symbol.isEmpty())
    platform::drawSymbol(painter, QRectF(place.left(), (height() - symbolSide) / 2.0, symbolSide, symbolSide),
                         symbol, {color});
  place.setLeft(place.left() + symbolWidth());
  painter.setPen(color);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width());
  painter.drawText(
      place, Qt::AlignVCenter | (symbol.isEmpty() ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::TextSingleLine,
      shown);
  if (hasFocus())
    drawFocusRing(painter, QRectF(rect()), AppColors::accent.resolved(appearance));
}

}  // namespace sorrel
