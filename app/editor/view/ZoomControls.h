#pragma once

#include "platform/base/Subscription.h"

#include <QWidget>

namespace sorrel {

class Canvas;
class SymbolButton;
class TextButton;

/// The capsule in the canvas's corner: zoom out, the zoom in percent, which fits the picture again, and zoom
/// in. Their keys serve in the whole window, with Ctrl and with the logo key.
class ZoomControls : public QWidget {
 public:
  explicit ZoomControls(Canvas& canvas);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void showTexts();
  void showFactor();
  void place();

  Canvas& canvas;
  SymbolButton* const out;
  TextButton* const factor;
  SymbolButton* const in;
  platform::Subscription zoomChanges;
  platform::Subscription languageChanges;
};

}  // namespace sorrel
