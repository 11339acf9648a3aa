#include "app/editor/view/ColorTools.h"

#include "app/editor/view/ColorSwatches.h"
#include "app/editor/view/EditorPalette.h"
#include "app/editor/view/HexCopyButton.h"
#include "app/editor/view/HueWheel.h"
#include "app/editor/view/PopoverTiming.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/SymbolButton.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppColors.h"
#include "platform/desktop/Pasteboard.h"

#include <QHBoxLayout>
#include <QPainter>

namespace sorrel {
namespace {

constexpr int toggleSide = 22;
constexpr int eyedropperSide = 24;
constexpr int spacing = 12;

QString hexText(quint32 colorHex) {
  return QStringLiteral("#%1").arg(colorHex & 0xffffff, 6, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

/// A colour wheel with the pen's colour in its middle.
class PaletteToggle : public QAbstractButton {
 public:
  explicit PaletteToggle(QWidget* parent) : QAbstractButton(parent) {
    setFixedSize(toggleSide, toggleSide);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
  }

  void setHex(quint32 next) {
    hex = next;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(rect());
    QConicalGradient wheel(area.center(), 0);
    // The toolkit's go round against the clock.
    for (const auto& [place, color] : hueWheel())
      wheel.setColorAt(1 - place, color);
    painter.setPen(Qt::NoPen);
    painter.setBrush(wheel);
    painter.drawEllipse(area);
    if (underMouse()) {
      painter.setBrush(QColor(0, 0, 0, isDown() ? 70 : 30));
      painter.drawEllipse(area);
    }
    constexpr double innerSide = 9, rim = 2;
    QRectF inner(0, 0, innerSide, innerSide);
    inner.moveCenter(area.center());
    painter.setOpacity(ColorSwatches::isCustom(hex) ? 0.95 : 0.4);
    fillRounded(painter, inner, innerSide / 2, colorFromHex(hex));
    strokeRounded(painter, inner, innerSide / 2, Qt::white, rim);
    painter.setOpacity(1);
    if (hasFocus())
      drawFocusRing(painter, area, Qt::white, toggleSide / 2.0);
  }

 private:
  quint32 hex = 0;
};

ColorTools::ColorTools(const SectionContext& context, QWidget* parent)
    : QWidget(parent),
      model(context.model),
      timing(context.timing),
      toggle(new PaletteToggle(this)),
      eyedropper(new SymbolButton({.symbol = QStringLiteral("eyedropper"),
                                   .side = 14,
                                   .ink = EditorPalette::icon,
                                   .disc = EditorPalette::always(0x14ffffff),
                                   .rim = EditorPalette::always(0x2effffff)},
                                  eyedropperSide, this)),
      hexCopy(new HexCopyButton(this)),
      watch(model, {&model.colorHex}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing);
  row->addWidget(toggle);
  row->addWidget(eyedropper);
  row->addWidget(hexCopy);
  row->addStretch();
  connect(eyedropper, &QAbstractButton::clicked, this, [this] { pickFromScreen(); });
  connect(hexCopy, &QAbstractButton::clicked, this, [this] { copyHex(); });
  showTexts();
  refresh();
}

QAbstractButton* ColorTools::paletteToggle() const {
  return toggle;
}

void ColorTools::pickFromScreen() {
  timing.beginWorkElsewhere();
  sampler.show([this](std::optional<quint32> picked) {
    if (picked)
      model.colorHex = *picked;
    timing.endWorkElsewhere();
  });
}

void ColorTools::copyHex() {
  platform::Pasteboard::clearContents();
  const bool isCopied = platform::Pasteboard::writeObjects({hexText(model.colorHex)});
  timing.keep();
  if (isCopied)
    hexCopy->showCopied();
}

void ColorTools::refresh() {
  toggle->setHex(model.colorHex);
  hexCopy->setHex(hexText(model.colorHex));
}

void ColorTools::showTexts() {
  const QString help = localized(QStringLiteral("editor.pen.custom.help"));
  toggle->setToolTip(help);
  toggle->setAccessibleName(help);
  eyedropper->setHelp(localized(QStringLiteral("editor.pen.eyedropper.help")));
  hexCopy->setTexts(localized(QStringLiteral("editor.pen.copyHex.help")),
                    localized(QStringLiteral("editor.pen.copied")));
}

}  // namespace sorrel
