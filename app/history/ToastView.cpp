#include "app/history/ToastView.h"

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
constexpr int shadowRadius = 6;
constexpr int shadowDrop = 2;
constexpr int shadowRoom = shadowRadius + shadowDrop;
constexpr qreal shadowOpacity = 0.25;
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
  painter.setPen(Qt::NoPen);
  // The soft shadow: capsules of growing size, each letting a little through.
  for (int grown = shadowRadius; grown >= 1; --grown) {
    const QRectF larger = capsule.adjusted(-grown, -grown, grown, grown).translated(0, shadowDrop);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(shadowOpacity / shadowRadius)));
    painter.drawRoundedRect(larger, larger.height() / 2, larger.height() / 2);
  }
  painter.setBrush(AppColors::accent.resolved());
  painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
  // The dark appearance's capsule is a light green: a shade lifts the white off it.
  painter.setPen(QColor(0, 0, 0, 90));
  painter.drawText(capsule.translated(0, 1), Qt::AlignCenter | Qt::TextSingleLine, text);
  painter.setPen(textStyle.color.resolved());
  painter.drawText(capsule, Qt::AlignCenter | Qt::TextSingleLine, text);
}

}  // namespace sorrel
