#pragma once

#include <QScrollBar>

class QAbstractScrollArea;

namespace sorrel {

/// A view's scroll bar that floats over the view's right or lower edge and takes no room from its contents.
/// The view's own scroll bar must be hidden. `fromCorners`: how far the bar stays from the view's corners,
/// for views whose own are round.
class SlimScrollBar : public QScrollBar {
 public:
  explicit SlimScrollBar(QAbstractScrollArea& view, Qt::Orientation orientation = Qt::Vertical,
                         int fromCorners = 0);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const int fromCorners;
};

}  // namespace sorrel
