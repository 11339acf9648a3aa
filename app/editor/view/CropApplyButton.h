#pragma once

#include "platform/base/Subscription.h"

#include <QWidget>

#include <functional>

class QPushButton;

namespace sorrel {

/// The button that crops, with its shadow, in the middle of its parent. Return presses it while it shows.
class CropApplyButton : public QWidget {
 public:
  CropApplyButton(std::function<void()> apply, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void retranslate();
  void center();

  QPushButton* const button;
  platform::Subscription languageChange;
};

}  // namespace sorrel
