#include "app/look/PopupSurface.h"

#include "app/look/LookColors.h"
#include "app/look/SoftShadow.h"
#include "platform/desktop/WindowShape.h"

#include <QPainter>
#include <QWidget>

namespace sorrel::PopupSurface {
namespace {

constexpr int cornerRadius = 7;
constexpr SoftShadow shadow{10, 2, 0.22};

bool isTranslucent(const QWidget* popup) {
  return popup && popup->testAttribute(Qt::WA_TranslucentBackground);
}

}  // namespace

void prepare(QWidget& popup) {
  popup.setAttribute(Qt::WA_TranslucentBackground, platform::isComposited());
}

void fit(QWidget& popup) {
  if (!isTranslucent(&popup))
    platform::cutToRoundedShape(popup, cornerRadius);
}

int margin(const QWidget* popup) {
  return isTranslucent(popup) ? static_cast<int>(shadow.room()) : 0;
}

QRect sheet(const QWidget& popup) {
  const int room = margin(&popup);
  return popup.rect().adjusted(room, room, -room, -room);
}

void paint(QPainter& painter, const QWidget& popup) {
  const auto appearance = platform::appearanceOf(popup.palette());
  const QColor fill = LookColors::popup.resolved(appearance);
  const QRectF area(sheet(popup));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (isTranslucent(&popup)) {
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(popup.rect(), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    paintSoftShadow(painter, area, cornerRadius, shadow);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(area, cornerRadius, cornerRadius);
  } else {
    painter.fillRect(popup.rect(), fill);
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(LookColors::popupBorder.resolved(appearance));
  painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5, cornerRadius - 0.5);
  painter.restore();
}

}  // namespace sorrel::PopupSurface
