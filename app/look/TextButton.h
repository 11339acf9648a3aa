#pragma once

#include "app/look/TextStyle.h"

#include <QAbstractButton>

namespace sorrel {

/// A button that is its text, with a small symbol before it if it has one; the whole rectangle can be
/// clicked. Text that doesn't fit is shortened in the middle.
class TextButton : public QAbstractButton {
 public:
  /// Around the text, for the ring that shows the keyboard.
  static constexpr int margin = 3;

  TextButton(const TextStyle& style, const QString& symbol, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int symbolWidth() const;

  const TextStyle style;
  const QString symbol;
};

}  // namespace sorrel
