#pragma once

#include <QPixmap>
#include <QWidget>

#include <functional>

namespace sorrel {

/// A field in which the pointer or the arrow keys move a thumb: of saturation and brightness across and up,
/// or of the hue alone across. Around the field its widget has room for the thumb.
class PickerField : public QWidget {
 public:
  struct Look {
    QSize field;
    double radius;
    double thumb;
    double shadowOpacity;
    bool movesAcrossOnly;
    /// Fills the field, whose corner is the painter's origin.
    std::function<void(QPainter&, const QRectF&)> fill;
  };
  /// Around the field, on each side.
  static constexpr int room = 9;

  /// `onPick` hears where the user puts the thumb: from 0 to 1 across, and down.
  PickerField(Look look, std::function<void(const QPointF&)> onPick, QWidget* parent);

  /// `color`: of the thumb.
  void setThumb(const QPointF& place, const QColor& color);
  /// For screen readers, beside the name: what is chosen.
  void setValueText(const QString& text) { setAccessibleDescription(text); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QRectF fieldArea() const;
  void pick(const QPointF& point);

  const Look look;
  const std::function<void(const QPointF&)> onPick;
  QPointF thumb;
  QColor thumbColor;
};

}  // namespace sorrel
