#include "app/look/SymbolButton.h"

#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "platform/desktop/Symbols.h"

#include <QEvent>
#include <QPainter>

namespace sorrel {

SymbolButton::SymbolButton(const Look& initial, int size, QWidget* parent)
    : QAbstractButton(parent), look(initial) {
  setFixedSize(size, size);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
}

void SymbolButton::setLook(const Look& next) {
  if (look == next)
    return;
  look = next;
  update();
}

void SymbolButton::setHelp(const QString& text) {
  setToolTip(text);
  setAccessibleName(text);
}

bool SymbolButton::event(QEvent* event) {
  const bool isHandled = QAbstractButton::event(event);
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
    update();
  return isHandled;
}

double SymbolButton::cornerRadius(bool isRound) const {
  return isRound || width() > height() ? height() / 2.0 : 4;
}

void SymbolButton::paintEvent(QPaintEvent*) {
  const auto appearance = platform::appearanceOf(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor disc = look.disc.resolved(appearance);
  const bool isRound = disc.alpha() > 0 || look.mark.resolved(appearance).alpha() > 0;
  const double radius = cornerRadius(isRound);
  painter.setPen(Qt::NoPen);
  painter.setBrush(disc);
  painter.drawEllipse(rect());
  strokeRounded(painter, rect(), rect().height() / 2.0, look.rim.resolved(appearance), 1);
  painter.setPen(Qt::NoPen);
  QColor ink = look.ink.resolved(appearance);
  if (underMouse() && isEnabled()) {  // stronger while pressed, and never so that a white symbol pales
    const int strength = isDown() ? 70 : 36;
    if (isRound) {
      painter.setBrush(QColor(0, 0, 0, 2 * strength));
      painter.drawEllipse(rect());
    } else {
      painter.setBrush(QColor(ink.red(), ink.green(), ink.blue(), strength));
      painter.drawRoundedRect(rect(), radius, radius);
      ink.setAlpha(isDown() ? 255 : (ink.alpha() + 255) / 2);  // a dimmed one brightens
    }
  }
  QRectF place(0, 0, look.side, look.side);
  place.moveCenter(QRectF(rect()).center());
  platform::drawSymbol(painter, place, look.symbol, {ink, look.mark.resolved(appearance)});
  if (hasFocus())
    drawFocusRing(painter, QRectF(rect()), look.ring.resolved(appearance), radius);
}

}  // namespace sorrel
