#include "app/look/ButtonControls.h"

#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"
#include "platform/desktop/Symbols.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

namespace sorrel {
namespace {

constexpr const char* symbolProperty = "symbol";
constexpr const char* destructiveProperty = "destructive";

constexpr int padding = 12;
constexpr int flatPadding = 7;
constexpr int gap = 5;
constexpr int arrowWidth = ButtonControls::menuIndicator - gap;
constexpr int ringRoom = 2;
constexpr int knobMargin = 2;

bool isFlat(const QStyleOptionButton& button) {
  return button.features.testFlag(QStyleOptionButton::Flat);
}

bool isProminent(const QStyleOptionButton& button) {
  return button.features.testFlag(QStyleOptionButton::DefaultButton) && !isFlat(button);
}

bool hasMenu(const QStyleOptionButton& button) {
  return button.features.testFlag(QStyleOptionButton::HasMenu);
}

QString symbolOf(const QWidget* widget) {
  return widget ? widget->property(symbolProperty).toString() : QString();
}

int symbolSide(const QStyleOptionButton& button) {
  return button.fontMetrics.ascent() + 1;
}

int paddingOf(const QStyleOptionButton& button) {
  return isFlat(button) ? flatPadding : padding;
}

bool isHovered(const QStyleOptionButton& button) {
  return button.state.testFlag(QStyle::State_MouseOver) && button.state.testFlag(QStyle::State_Enabled);
}

bool isPressed(const QStyleOptionButton& button) {
  return button.state.testFlag(QStyle::State_Sunken);
}

QColor inkOf(const QStyleOptionButton& button, const QWidget* widget) {
  const ControlColors colors(button);
  if (isProminent(button))
    return colors(LookColors::onAccent);
  return colors(widget && widget->property(destructiveProperty).toBool() ? LookColors::destructive
                                                                         : LookColors::label);
}

}  // namespace

void setSymbol(QAbstractButton& button, const QString& name) {
  if (symbolOf(&button) == name)
    return;
  button.setProperty(symbolProperty, name);
  // The button keeps its size until its looks change.
  QEvent change(QEvent::StyleChange);
  QCoreApplication::sendEvent(&button, &change);
}

void setDestructive(QPushButton& button) {
  button.setProperty(destructiveProperty, true);
}

namespace ButtonControls {

QSize pushButtonSize(const QStyleOptionButton& button, const QSize& contents, const QWidget* widget) {
  int width = button.text.isEmpty() ? 0 : contents.width();
  if (!symbolOf(widget).isEmpty())
    width += symbolSide(button) + (button.text.isEmpty() ? 0 : gap);
  return {width + 2 * paddingOf(button), std::max(height, contents.height() + 8)};
}

void paintPushButton(QPainter& painter, const QStyleOptionButton& button) {
  const ControlColors colors(button);
  const QRectF area = onWholePixels(painter, button.rect);
  const bool isOn = button.state.testFlag(QStyle::State_On);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (isProminent(button))
    fillRounded(painter, area, controlRadius, colors.accent(isHovered(button), isPressed(button)));
  else if (!isFlat(button) || isHovered(button) || isPressed(button) || isOn)
    fillRounded(painter, area, controlRadius, colors.ground(isHovered(button), isPressed(button) || isOn));
  if (showsKeyboardFocus(button)) {
    constexpr double inside = 2;
    if (isProminent(button))
      drawFocusRing(painter, area.adjusted(inside, inside, -inside, -inside), colors(LookColors::onAccent),
                    controlRadius - inside);
    else
      drawFocusRing(painter, area, colors(AppColors::accent), controlRadius);
  }
  painter.restore();
}

void paintPushButtonLabel(QPainter& painter, const QStyleOptionButton& button, const QWidget* widget) {
  const QColor ink = inkOf(button, widget);
  const QString symbol = symbolOf(widget);
  const int side = symbol.isEmpty() ? 0 : symbolSide(button);
  const int textGap = side > 0 && !button.text.isEmpty() ? gap : 0;
  QRect place = button.rect.adjusted(paddingOf(button), 0, -paddingOf(button), 0);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (hasMenu(button)) {
    constexpr double down = 90;
    drawArrowHead(painter, QRectF(place.right() + 1 - arrowWidth, place.top(), arrowWidth, place.height()),
                  down, ink);
    place.setRight(place.right() - arrowWidth - gap);
  }
  constexpr int flags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextHideMnemonic;
  const int room = place.width() - side - textGap;
  const QString text = button.fontMetrics.elidedText(button.text, Qt::ElideRight, room, Qt::TextShowMnemonic);
  const int width = side + textGap + button.fontMetrics.size(Qt::TextShowMnemonic, text).width();
  place.setLeft(place.left() + (place.width() - width) / 2);
  if (side > 0)
    platform::drawSymbol(painter, QRectF(place.left(), place.top(), side, place.height()), symbol, {ink});
  place.setLeft(place.left() + side + textGap);
  painter.setPen(ink);
  painter.drawText(place, flags, text);
  painter.restore();
}

void paintSwitch(QPainter& painter, const QStyleOptionButton& button) {
  const ControlColors colors(button);
  const bool isOn = button.state.testFlag(QStyle::State_On);
  const QRectF area = onWholePixels(painter, button.rect.adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom));
  const double radius = area.height() / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  fillRounded(painter, area, radius,
              isOn ? colors.accent(isHovered(button), isPressed(button))
                   : colors(isHovered(button) ? LookColors::troughHovered : LookColors::trough));
  QRectF knob(0, 0, area.height() - 2 * knobMargin, area.height() - 2 * knobMargin);
  knob.moveTopLeft(area.topLeft() + QPointF(knobMargin, knobMargin));
  if (isOn)
    knob.moveRight(area.right() - knobMargin);
  fillRounded(painter, knob.translated(0, 0.5), knob.height() / 2, QColor(0, 0, 0, 40));
  fillRounded(painter, knob, knob.height() / 2, colors(LookColors::knob));
  if (showsKeyboardFocus(button))
    drawFocusRing(painter, button.rect, colors(AppColors::accent), button.rect.height() / 2.0);
  painter.restore();
}

void paintSwitchLabel(QPainter& painter, const QStyleOptionButton& button) {
  painter.save();
  painter.setPen(ControlColors(button)(LookColors::label));
  painter.drawText(button.rect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic, button.text);
  painter.restore();
}

}  // namespace ButtonControls
}  // namespace sorrel
