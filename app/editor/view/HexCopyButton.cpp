#include "app/editor/view/HexCopyButton.h"

#include "app/editor/view/EditorPalette.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"
#include "app/shell/AppColors.h"
#include "platform/desktop/Symbols.h"

#include <QFontDatabase>
#include <QPainter>

namespace sorrel {
namespace {

using namespace std::chrono_literals;
using platform::Easing;

constexpr auto appearing = 120ms, disappearing = 200ms, shownFor = 1100ms;
constexpr int symbolSide = 10;
constexpr int gap = 3;
constexpr int margin = 4;
constexpr platform::Color plain = EditorPalette::always(0x99ffffff);
constexpr platform::Color hovered = EditorPalette::always(0xe6ffffff);

}  // namespace

HexCopyButton::HexCopyButton(QWidget* parent)
    : QAbstractButton(parent), copied(appearing, Easing::Out, [this](double) { update(); }) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPixelSize(10);
  font.setWeight(QFont::Medium);
  setFont(font);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
}

void HexCopyButton::setHex(const QString& hex) {
  setText(hex);
  setAccessibleDescription(hex);  // its name says what a press does
  updateGeometry();
}

void HexCopyButton::setTexts(const QString& help, const QString& copiedNow) {
  setToolTip(help);
  setAccessibleName(help);
  copiedText = copiedNow;
  updateGeometry();
  update();
}

void HexCopyButton::showCopied() {
  copied.moveTo(1, appearing, Easing::Out);
  if (!revert.isPending())  // after a second copy it goes by the first
    revert = platform::MainQueue::main().asyncAfter(shownFor,
                                                    [this] { copied.moveTo(0, disappearing, Easing::Out); });
}

QSize HexCopyButton::sizeHint() const {
  const int words =
      std::max(fontMetrics().horizontalAdvance(text()), fontMetrics().horizontalAdvance(copiedText));
  return {2 * margin + symbolSide + gap + words + 1, 24};
}

void HexCopyButton::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette(), isEnabled());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (underMouse() && isDown())
    fillRounded(painter, rect(), 4, colors(LookColors::control));
  const double said = copied.value();
  if (said < 1)
    paintFace(painter, QStringLiteral("doc.on.doc"), text(), colors(underMouse() ? hovered : plain),
              1 - said);
  if (said > 0)
    paintFace(painter, QStringLiteral("checkmark"), copiedText, colors(AppColors::accent), said);
  if (hasFocus())
    drawFocusRing(painter, rect(), colors(AppColors::accent));
}

void HexCopyButton::paintFace(QPainter& painter, const QString& symbol, const QString& words,
                              const QColor& color, double opacity) const {
  painter.setOpacity(opacity);
  platform::drawSymbol(painter, QRectF(margin, (height() - symbolSide) / 2.0, symbolSide, symbolSide), symbol,
                       {color});
  painter.setPen(color);
  painter.drawText(rect().adjusted(margin + symbolSide + gap, 0, 0, 0),
                   Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, words);
  painter.setOpacity(1);
}

}  // namespace sorrel
