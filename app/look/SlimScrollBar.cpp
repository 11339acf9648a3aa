#include "app/look/SlimScrollBar.h"

#include "app/look/SliderControls.h"

#include <QAbstractScrollArea>
#include <QEvent>

namespace sorrel {

SlimScrollBar::SlimScrollBar(QAbstractScrollArea& view) : QScrollBar(Qt::Vertical, &view) {
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
  constexpr int width = SliderControls::scrollBarWidth;
  if (event->type() == QEvent::Resize)
    setGeometry(parentWidget()->width() - width, 0, width, parentWidget()->height());
  return false;
}

}  // namespace sorrel
