#include "app/editor/view/PenSection.h"

#include "app/editor/view/ColorSwatches.h"
#include "app/editor/view/ColorTools.h"
#include "app/editor/view/InlineColorPicker.h"
#include "app/look/ChoiceButton.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppColors.h"

#include <QHBoxLayout>
#include <QPainter>

#include <array>

namespace sorrel {
namespace {

constexpr std::array penWidths = {3, 6, 11};
constexpr int dotSpacing = 14;
constexpr int ringRoom = 3;  // around a dot

class WidthDot : public ChoiceButton {
 public:
  WidthDot(int lineWidth, QWidget* parent)
      : ChoiceButton({lineWidth + 10 + 2 * ringRoom, penWidths.back() + 10 + 2 * ringRoom}, parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr double chosen = 0.95, hovered = 0.5, plain = 0.3;
    const double diameter = width() - 2 * ringRoom;
    QRectF dot(0, 0, diameter, diameter);
    dot.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double opacity = isChecked() ? chosen : isHovered() ? hovered : plain;
    fillRounded(painter, dot, diameter / 2, QColor::fromRgbF(1, 1, 1, float(opacity)));
    if (hasFocus())
      drawFocusRing(painter, dot.adjusted(-ringRoom, -ringRoom, ringRoom, ringRoom),
                    ControlColors(palette(), true)(AppColors::accent), diameter / 2 + ringRoom);
  }
};

}  // namespace

PenSection::PenSection(const SectionContext& context, QWidget* parent)
    : OptionsSection(parent),
      model(context.model),
      swatches(new ColorSwatches(model, this)),
      tools(new ColorTools(context, this)),
      picker(new InlineColorPicker(model, this)),
      watch(model, {&model.lineWidth}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  addWideRow(swatches);
  addRow(tools);
  addWideRow(picker);
  addDivider();
  addRow(widthRow());
  connect(tools->paletteToggle(), &QAbstractButton::clicked, picker, &InlineColorPicker::toggle);
  showTexts();
  refresh();
}

QWidget* PenSection::widthRow() {
  auto* const row = new QWidget(this);
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(dotSpacing - 2 * ringRoom);
  for (const int width : penWidths) {
    auto* const dot = new WidthDot(width, row);
    connect(dot, &QAbstractButton::clicked, this, [this, width] { model.lineWidth = width; });
    line->addWidget(dot);
    widths.push_back(dot);
  }
  line->addStretch();
  return row;
}

void PenSection::refresh() {
  for (size_t i = 0; i < widths.size(); ++i)
    widths[i]->setChosen(model.lineWidth == penWidths[i]);
}

void PenSection::showTexts() {
  for (size_t i = 0; i < widths.size(); ++i)
    widths[i]->setHelp(localized(QStringLiteral("editor.pen.width")).arg(penWidths[i]));
}

}  // namespace sorrel
