#include "app/history/ThumbnailDrag.h"

#include "platform/desktop/FocusablePanel.h"

#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

namespace sorrel {

QPixmap dragPicture(const QPixmap& picture) {
  constexpr float opacity = 0.7F;
  constexpr qreal cornerRadius = 6;
  if (picture.isNull())
    return {};
  QPixmap result(picture.size());
  result.setDevicePixelRatio(picture.devicePixelRatio());
  result.fill(Qt::transparent);
  QPainter painter(&result);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgbF(0, 0, 0, opacity));
  painter.drawRoundedRect(QRectF(QPointF(), picture.deviceIndependentSize()), cornerRadius, cornerRadius);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.drawPixmap(0, 0, picture);
  return result;
}

void dragFile(const QUrl& file, const QPixmap& picture, const QPoint& grabbedAt, const QWidget& from) {
  // The drag runs an event loop of its own, in which the panel may close: it starts from outside of the
  // panel's calls, and owes nothing to it.
  const auto drag = [file, hanging = dragPicture(picture), grabbedAt, view = QPointer(&from)] {
    platform::DragFromPanel dragging(view);
    auto* const contents = new QMimeData;
    contents->setUrls({file});
    auto* const session = new QDrag(qApp);
    session->setMimeData(contents);
    session->setPixmap(hanging);
    session->setHotSpot(grabbedAt);
    if (session->exec(Qt::CopyAction) != Qt::IgnoreAction)
      dragging.setTaken();
  };
  QMetaObject::invokeMethod(qApp, drag, Qt::QueuedConnection);
}

}  // namespace sorrel
