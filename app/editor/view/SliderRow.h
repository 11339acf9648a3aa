#pragma once

#include <QWidget>

#include <functional>

class QSlider;

namespace sorrel {

/// A symbol and a slider over a range of numbers, without steps.
class SliderRow : public QWidget {
 public:
  struct Range {
    double least;
    double greatest;
  };

  /// `onChange` hears the values that the user chooses.
  SliderRow(const QString& symbol, const Range& range, const std::function<void(double)>& onChange,
            QWidget* parent);

  void setValue(double value);
  /// The tooltip, which is the slider's accessible name too.
  void setHelp(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString symbol;
  const Range range;
  QSlider* const slider;
};

}  // namespace sorrel
