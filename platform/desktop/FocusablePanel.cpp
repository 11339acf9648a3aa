#include "platform/desktop/FocusablePanel.h"

#include "platform/base/NotificationCenter.h"
#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/panel/PanelHints.h"

#include <QEvent>
#include <QWindow>

namespace platform {
namespace {

constexpr std::chrono::milliseconds landingTime(80);

}  // namespace

FocusablePanel::FocusablePanel(const QSize& size, int radius, const Color& outline)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      contentSize(size),
      cornerRadius(radius),
      frame(new PanelFrame(this, radius, outline)),
      compositing([this] { fit(); }) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose, false);
}

QRect FocusablePanel::contentRect() const {
  return QRect(QPoint(margin, margin), contentSize);
}

bool FocusablePanel::isAt(const QPoint& point) const {
  return contentRect().contains(mapFromGlobal(point));
}

bool FocusablePanel::isSeenThrough() const {
  return isComposited() && windowHandle() && windowHandle()->format().hasAlpha();
}

void FocusablePanel::setContentView(QWidget* view) {
  content = view;
  content->setParent(this);
  content->setFocus();
}

void FocusablePanel::appear(const QRectF& place, const QPointF& offset, std::chrono::milliseconds duration) {
  target = place;
  startOffset = offset;
  create();
  windowHandle()->installEventFilter(this);
  setMargin(isSeenThrough() ? PanelFrame::shadowRoom : 0);
  motion.emplace(duration, Easing::Out, [this](double progress) {
    moveTo(target.translated(startOffset * (1 - progress)));
    setWindowOpacity(progress);
  });
  const bool isMoving = isMotionWanted();
  // Not seen yet, it first goes where it is to end, to learn whether it may stay there.
  moveTo(isMoving && margin == 0 ? target.translated(startOffset) : target);
  setWindowOpacity(isMoving ? 0 : 1);
  show();
  raise();
  askForKeyboard(*this);
}

void FocusablePanel::didShow() {
  fit();  // the frame that the window manager may have put around it wants its shape, too
  if (margin == 0 || hasLanded()) {
    begin();
    return;
  }
  // Some window managers move the window only now. Others keep the shadow's room on the screen, too.
  landing = MainQueue::main().asyncAfter(landingTime, [this] {
    if (!hasLanded())
      setMargin(0);
    begin();
  });
}

bool FocusablePanel::hasLanded() const {
  constexpr qreal rounding = 2;
  const QPointF asked = target.topLeft() - QPointF(margin, margin);
  const auto landed = placeOf(*this);
  return !landed || (*landed - asked).manhattanLength() <= rounding;
}

void FocusablePanel::begin() {
  motion->jumpTo(0);
  motion->moveTo(1);
}

void FocusablePanel::setMargin(int points) {
  margin = points;
  setFixedSize(contentSize.grownBy({margin, margin, margin, margin}));
  if (content)
    content->setGeometry(contentRect());
  tellWindowManager(*this, margin);
  fit();
}

void FocusablePanel::fit() {
  if (isSeenThrough()) {
    removeShape(*this);
    isBlurred = canBlurBehind();
    // Who blurs counts from the panel, of which the margin is no part.
    if (isBlurred)
      blurBehind(*this, QRect({}, contentSize), cornerRadius);
  } else {
    cutToRoundedShape(*this, contentRect(), cornerRadius);
    isBlurred = false;
  }
  takeClicksOnlyIn(*this, contentRect());
  frame->fit(contentRect(), isSeenThrough());
  update();
}

void FocusablePanel::moveTo(const QRectF& place) {
  move(place.topLeft().toPoint() - QPoint(margin, margin));
}

QVariant FocusablePanel::notificationObject() const {
  return QVariant::fromValue(reinterpret_cast<quintptr>(this));
}

bool FocusablePanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && !isShown && windowHandle()->isExposed()) {
    isShown = true;
    didShow();
  }
  return QWidget::eventFilter(watched, event);
}

bool FocusablePanel::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  // The toolkit says so also of a keyboard that is only held.
  if (event->type() == QEvent::WindowDeactivate && !hasKeyboard(*this))
    resignKey();
  return isHandled;
}

bool FocusablePanel::nativeEvent(const QByteArray& eventType, void* message, qintptr* result) {
  if (eventType == "xcb_generic_event_t") {
    switch (keyboardNews(message)) {
      case KeyboardNews::None:
        break;
      case KeyboardNews::Held:
        isHeld = true;
        break;
      case KeyboardNews::GivenBack:
        isHeld = false;
        break;
      case KeyboardNews::Lost:
        isHeld = false;
        resignKey();
        break;
    }
  }
  return QWidget::nativeEvent(eventType, message, result);
}

void FocusablePanel::resignKey() {
  NotificationCenter::defaultCenter().post(QString::fromLatin1(didResignKeyNotification),
                                           notificationObject());
}

bool isBackdropBlurred(const QWidget& view) {
  const auto* const panel = dynamic_cast<const FocusablePanel*>(view.window());
  return panel && panel->isBackdropBlurred();
}

}  // namespace platform
