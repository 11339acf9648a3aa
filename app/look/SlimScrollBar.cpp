#include "app/look/SlimScrollBar.h"

#include "app/look/SliderControls.h"

#include <QAbstractScrollArea>
#include <QEvent>

namespace sorrel {

SlimScrollBar::SlimScrollBar(QAbstractScrollArea& view, Qt::Orientation along, int distance)
    : QScrollBar(along, &view), fromCorners(distance) {
  QScrollBar* const hidden = along == Qt::Vertical ? view.verticalScrollBar() : view.horizontalScrollBar();
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
  constexpr int width = SliderControls::scrollBarWidth;
  if (event->type() != QEvent::Resize)
    return false;
  const QSize view = parentWidget()->size();
  if (orientation() == Qt::Vertical)
    setGeometry(view.width() - width, fromCorners, width, view.height() - 2 * fromCorners);
  else
    setGeometry(fromCorners, view.height() - width, view.width() - 2 * fromCorners, width);
  return false;
}

}  // namespace sorrel
