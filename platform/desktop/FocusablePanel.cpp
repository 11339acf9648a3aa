#include "platform/desktop/FocusablePanel.h"

#include "platform/base/NotificationCenter.h"
#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/x11/X11Connection.h"

#include <QEvent>
#include <QPainter>
#include <QWindow>

#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace platform {
namespace {

constexpr int shadowMargin = 32;
constexpr int shadowDrop = 6;
constexpr double shadowSigma = 10;
constexpr QColor shadowColor(0, 0, 0, 90);

QImage shadowOf(const QSize& size, int radius, qreal scale) {
  const QSizeF whole = QSizeF(size.grownBy({shadowMargin, shadowMargin, shadowMargin, shadowMargin})) * scale;
  QImage image(whole.toSize(), QImage::Format_RGBA8888_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shadowColor);
  painter.drawRoundedRect(QRect(QPoint(shadowMargin, shadowMargin + shadowDrop), size), radius, radius);
  painter.end();
  image = gaussianBlur(std::move(image), shadowSigma * scale);
  // None below the panel, which may let something through.
  painter.begin(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  painter.setCompositionMode(QPainter::CompositionMode_Clear);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRoundedRect(QRect(QPoint(shadowMargin, shadowMargin), size), radius, radius);
  painter.end();
  image.setDevicePixelRatio(scale);
  return image;
}

/// The rounded rectangle in pixels, for a window that can't be translucent.
QRegion shapeOf(const QSize& size, int radius) {
  QBitmap shape(size);
  shape.clear();
  QPainter painter(&shape);
  painter.setBrush(Qt::color1);
  painter.setPen(Qt::color1);
  painter.drawRoundedRect(QRect(QPoint(), size).adjusted(0, 0, -1, -1), radius, radius);
  painter.end();
  return QRegion(shape);
}

}  // namespace

FocusablePanel::FocusablePanel(const QSize& size, int radius)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      contentSize(size),
      cornerRadius(radius),
      isComposited(isX11SelectionOwned("_NET_WM_CM_S0")),
      margin(isComposited ? shadowMargin : 0) {
  setAttribute(Qt::WA_TranslucentBackground, isComposited);
  setAttribute(Qt::WA_QuitOnClose, false);
  setFixedSize(contentSize.grownBy({margin, margin, margin, margin}));
  if (!isComposited)
    setMask(shapeOf(contentSize, cornerRadius));
}

QRect FocusablePanel::contentRect() const {
  return QRect(QPoint(margin, margin), contentSize);
}

void FocusablePanel::setContentView(QWidget* view) {
  view->setParent(this);
  view->setGeometry(contentRect());
  view->setFocus();
}

void FocusablePanel::appear(const QRectF& target, const QPointF& offset, std::chrono::milliseconds duration) {
  tellWindowManager();
  const auto place = [=, this](double progress) {
    moveTo(target.translated(offset * (1 - progress)));
    if (isComposited)
      setWindowOpacity(progress);
  };
  const bool isMoving = isMotionWanted();
  place(isMoving ? 0 : 1);
  show();
  raise();
  activateWindow();
  motion.emplace(duration, Easing::Out, place);
  if (isMoving)
    motion->moveTo(1);
}

void FocusablePanel::moveTo(const QRectF& target) {
  move(target.topLeft().toPoint() - QPoint(margin, margin));
}

QVariant FocusablePanel::notificationObject() const {
  return QVariant::fromValue(reinterpret_cast<quintptr>(this));
}

void FocusablePanel::tellWindowManager() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection || !isComposited)
    return;
  // The margin isn't part of the window: not to be snapped to, kept on the screen, or given a second shadow.
  const auto side = static_cast<quint32>(qRound(margin * devicePixelRatioF()));
  const quint32 extents[] = {side, side, side, side};
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(winId()),
                      x11Atom(connection, "_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, 4, extents);
  letClicksThroughShadow();
  windowHandle()->installEventFilter(this);
}

void FocusablePanel::letClicksThroughShadow() {
  const auto pixels = [this](int points) { return qRound(points * devicePixelRatioF()); };
  const xcb_rectangle_t inside{static_cast<qint16>(pixels(margin)), static_cast<qint16>(pixels(margin)),
                               static_cast<quint16>(pixels(contentSize.width())),
                               static_cast<quint16>(pixels(contentSize.height()))};
  xcb_shape_rectangles(x11Connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       static_cast<xcb_window_t>(winId()), 0, 0, 1, &inside);
}

bool FocusablePanel::eventFilter(QObject* watched, QEvent* event) {
  // A window manager may put a frame around the window, which gets the same shape only if that changes once
  // the frame is there.
  if (event->type() == QEvent::Expose && windowHandle()->isExposed())
    letClicksThroughShadow();
  return QWidget::eventFilter(watched, event);
}

bool FocusablePanel::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  if (event->type() == QEvent::WindowDeactivate)
    NotificationCenter::defaultCenter().post(QString::fromLatin1(didResignKeyNotification),
                                             notificationObject());
  return isHandled;
}

void FocusablePanel::paintEvent(QPaintEvent*) {
  if (!isComposited)
    return;
  if (shadow.isNull() || shadow.devicePixelRatio() != devicePixelRatioF())
    shadow = shadowOf(contentSize, cornerRadius, devicePixelRatioF());
  QPainter(this).drawImage(0, 0, shadow);
}

}  // namespace platform
