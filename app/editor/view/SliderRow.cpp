#include "app/editor/view/SliderRow.h"

#include "app/look/LookColors.h"
#include "platform/desktop/Symbols.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>

namespace sorrel {
namespace {

constexpr int symbolSide = 14;
constexpr int symbolFrame = 16;
constexpr int gap = 8;
constexpr int steps = 1000;  // finer than there are pixels

}  // namespace

SliderRow::SliderRow(const QString& symbolName, const Range& all, const std::function<void(double)>& onChange,
                     QWidget* parent)
    : QWidget(parent), symbol(symbolName), range(all), slider(new QSlider(Qt::Horizontal, this)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(symbolFrame + gap, 0, 0, 0);
  row->addWidget(slider);
  slider->setRange(0, steps);
  slider->setSingleStep(steps / 50);
  slider->setPageStep(steps / 10);
  slider->setFocusPolicy(Qt::TabFocus);
  connect(slider, &QSlider::valueChanged, this, [this, onChange](int step) {
    onChange(range.least + (range.greatest - range.least) * step / steps);
  });
}

void SliderRow::setValue(double value) {
  const QSignalBlocker blocker(slider);
  slider->setValue(qRound((value - range.least) / (range.greatest - range.least) * steps));
}

void SliderRow::setHelp(const QString& text) {
  setToolTip(text);
  slider->setAccessibleName(text);
}

void SliderRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF frame(0, (height() - symbolSide) / 2.0, symbolFrame, symbolSide);
  platform::drawSymbol(painter, frame, symbol,
                       {LookColors::secondaryLabel.resolved(platform::appearanceOf(palette()))});
}

}  // namespace sorrel
