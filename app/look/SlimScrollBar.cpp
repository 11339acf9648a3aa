#include "app/look/SlimScrollBar.h"

#include "app/look/LookColors.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace sorrel {
namespace {

constexpr int barWidth = 12;
constexpr int inset = 3;

}  // namespace

SlimScrollBar::SlimScrollBar(QAbstractScrollArea& view) : QScrollBar(Qt::Vertical, &view) {
  setAttribute(Qt::WA_Hover);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  QScrollBar* const hidden = view.verticalScrollBar();
  connect(hidden, &QScrollBar::valueChanged, this, &QScrollBar::setValue);
  connect(this, &QScrollBar::valueChanged, hidden, &QScrollBar::setValue);
  connect(hidden, &QScrollBar::rangeChanged, this, [this, hidden](int minimum, int maximum) {
    setRange(minimum, maximum);
    setPageStep(hidden->pageStep());
    setSingleStep(hidden->singleStep());
    setVisible(maximum > minimum);
  });
  setVisible(false);
  view.installEventFilter(this);
}

bool SlimScrollBar::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize)
    setGeometry(parentWidget()->width() - barWidth, 0, barWidth, parentWidget()->height());
  return false;
}

void SlimScrollBar::paintEvent(QPaintEvent*) {
  QStyleOptionSlider option;
  initStyleOption(&option);
  // The style moves the handle, so it says where that is; only the looks are this bar's own.
  const QRect handle =
      style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  QColor color = LookColors::label.resolved();
  color.setAlpha(isSliderDown() ? 130 : underMouse() ? 100 : 64);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(QRectF(handle).adjusted(inset, inset, -inset, -inset), inset, inset);
}

}  // namespace sorrel
