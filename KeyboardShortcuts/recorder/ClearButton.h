#pragma once

#include <QAbstractButton>

namespace KeyboardShortcuts {

/// The cross at the end of a field that empties it.
class ClearButton : public QAbstractButton {
 public:
  static constexpr int side = 16;  // of the button, square

  explicit ClearButton(QWidget* field);

 private:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace KeyboardShortcuts
