#include "app/history/ToastView.h"

#include "app/look/SoftShadow.h"
#include "app/look/TextStyle.h"
#include "app/shell/AppColors.h"

#include <QAccessible>
#include <QPainter>

namespace sorrel {
namespace {

constexpr TextStyle textStyle{12, QFont::DemiBold, {0xffffffff, 0xffffffff}};
constexpr int horizontalPadding = 16;
constexpr int verticalPadding = 9;
constexpr int bottomPadding = 54;
constexpr int sideMargin = 12;  // at the least
constexpr SoftShadow shadow{6, 2, 0.25};
constexpr int shadowRoom = static_cast<int>(shadow.room());
constexpr std::chrono::milliseconds duration(200);

}  // namespace

ToastView::ToastView(QWidget* parent)
    : QWidget(parent), presence(duration, platform::Easing::InOut, [this](double) { place(); }) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFont(fontOf(textStyle));
  setVisible(false);
}

void ToastView::show(const std::optional<QString>& next) {
  if (next == shown)
    return;
  const bool isReplacing = shown && next;
  shown = next;
  if (next) {
    setAccessibleName(*next);
    const int room = parentWidget()->width() - 2 * (sideMargin + horizontalPadding);
    text = fontMetrics().elidedText(*next, Qt::ElideRight, room);
    const QSize capsule(fontMetrics().horizontalAdvance(text) + 2 * horizontalPadding,
                        fontMetrics().height() + 2 * verticalPadding);
    resize(capsule.grownBy({shadowRoom, shadowRoom, shadowRoom, shadowRoom}));
    raise();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
  }
  if (isReplacing && !presence.isMoving())
    place();
  else
    presence.moveTo(next ? 1 : 0);
}

void ToastView::place() {
  setVisible(presence.value() > 0);
  const int shownTop = parentWidget()->height() - bottomPadding - height() + shadowRoom;
  const int hiddenTop = parentWidget()->height();
  move((parentWidget()->width() - width()) / 2,
       qRound(hiddenTop + (shownTop - hiddenTop) * presence.value()));
  update();
}

void ToastView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setOpacity(presence.value());
  const QRectF capsule = QRectF(rect()).adjusted(shadowRoom, shadowRoom, -shadowRoom, -shadowRoom);
  paintSoftShadow(painter, capsule, capsule.height() / 2, shadow);
  painter.setPen(Qt::NoPen);
  painter.setBrush(AppColors::accent.resolved());
  painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
  constexpr int flags = Qt::AlignCenter | Qt::TextSingleLine;
  if (platform::currentAppearance() == platform::Appearance::Dark) {
    // Its capsule is a light green: a shade all around, faint enough to have no edge, lifts the white off it.
    painter.setPen(QColor(0, 0, 0, 26));
    for (const QPointF& by : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -0.5), QPointF(0, 1), QPointF(0, 1.5),
                              QPointF(-0.7, 0.7), QPointF(0.7, 0.7)})
      painter.drawText(capsule.translated(by), flags, text);
  }
  painter.setPen(textStyle.color.resolved());
  painter.drawText(capsule, flags, text);
}

}  // namespace sorrel
