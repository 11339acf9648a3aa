#include "platform/desktop/FocusablePanel.h"

#include "platform/base/NotificationCenter.h"

#include <QMouseEvent>

namespace platform {

FocusablePanel::FocusablePanel(const QSize& size, int radius, const Color& outline)
    : sheet(new PanelSheet(this, size, radius, outline)),
      surface(PanelSurface::make(*this, *sheet,
                                 {[this] {
                                    motion->jumpTo(0);
                                    motion->moveTo(1);
                                  },
                                  [this] { resignKey(); }})) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose, false);
}

FocusablePanel::~FocusablePanel() = default;

bool FocusablePanel::isAt(const QPoint& point) const {
  return sheet->panel().contains(sheet->mapFromGlobal(point));
}

void FocusablePanel::appear(const QRectF& place, const QPointF& offset, std::chrono::milliseconds duration) {
  motion.emplace(duration, Easing::Out, [this, place, offset](double progress) {
    surface->moveTo(place.translated(offset * (1 - progress)), progress);
  });
  surface->open(place, isMotionWanted() ? std::optional(place.translated(offset)) : std::nullopt);
}

void FocusablePanel::setVisible(bool isVisible) {
  if (!isVisible)
    surface->close();
  QWidget::setVisible(isVisible);
}

QVariant FocusablePanel::notificationObject() const {
  return QVariant::fromValue(reinterpret_cast<quintptr>(this));
}

bool FocusablePanel::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  // The toolkit says so also of a keyboard that is only held.
  if (event->type() == QEvent::WindowDeactivate && !surface->hasKeyboard())
    resignKey();
  return isHandled;
}

bool FocusablePanel::nativeEvent(const QByteArray& eventType, void* message, qintptr* result) {
  surface->handleNative(eventType, message);
  return QWidget::nativeEvent(eventType, message, result);
}

void FocusablePanel::mousePressEvent(QMouseEvent* event) {
  // Of a window that is larger than the panel. Who is beside it was clicked, as far as the user sees.
  if (!isAt(event->globalPosition().toPoint()))
    resignKey();
}

void FocusablePanel::resignKey() {
  NotificationCenter::defaultCenter().post(QString::fromLatin1(didResignKeyNotification),
                                           notificationObject());
}

DragFromPanel::DragFromPanel(const QWidget* view)
    : panel(view ? dynamic_cast<FocusablePanel*>(view->window()) : nullptr) {
  if (panel)
    panel->surface->beginDrag();
}

DragFromPanel::~DragFromPanel() {
  if (panel)
    panel->surface->endDrag(isTaken);
}

bool isBackdropBlurred(const QWidget& view) {
  const auto* const panel = dynamic_cast<const FocusablePanel*>(view.window());
  return panel && panel->isBackdropBlurred();
}

}  // namespace platform
