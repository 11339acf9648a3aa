#include "app/settings/view/SettingsTabBar.h"

#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"
#include "app/look/TextStyle.h"
#include "platform/desktop/Symbols.h"

#include <QPainter>
#include <QWheelEvent>

namespace sorrel {
namespace {

constexpr int barHeight = 60;
constexpr int tabHeight = 48;
constexpr int tabGap = 2;  // at each side of a tab
constexpr int leastTabWidth = 76;
constexpr int titleSide = 10;
constexpr int symbolTop = 5, symbolSide = 22;
constexpr int titleHeight = 16;
constexpr qreal radius = 7;
constexpr TextStyle plainText{11, QFont::Normal, LookColors::secondaryLabel};
constexpr TextStyle chosenText{11, QFont::Bold, AppColors::accent};

}  // namespace

SettingsTabBar::SettingsTabBar(QWidget* parent) : QTabBar(parent) {
  setFont(fontOf(chosenText));  // the wider one, by which the tabs are measured
  setExpanding(false);
  setDrawBase(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideNone);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setMouseTracking(true);
}

void SettingsTabBar::add(const QString& symbol) {
  setTabData(addTab(QString()), symbol);
}

QSize SettingsTabBar::sizeHint() const {
  return {QTabBar::sizeHint().width(), barHeight};
}

QSize SettingsTabBar::tabSizeHint(int index) const {
  const int title = fontMetrics().horizontalAdvance(tabText(index)) + 2 * titleSide;
  return {std::max(title, leastTabWidth) + 2 * tabGap, barHeight};
}

void SettingsTabBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void SettingsTabBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  for (int index = 0; index < count(); ++index)
    paintTab(painter, index);
}

void SettingsTabBar::paintTab(QPainter& painter, int index) const {
  const QRect whole = tabRect(index);
  const QRectF area(whole.left() + tabGap, (barHeight - tabHeight) / 2.0, whole.width() - 2 * tabGap,
                    tabHeight);
  const bool isChosen = index == currentIndex();
  const bool isHovered = whole.contains(mapFromGlobal(QCursor::pos())) && underMouse();
  if (isChosen || isHovered) {
    painter.setPen(Qt::NoPen);
    QColor fill = LookColors::control.resolved();
    if (!isChosen)
      fill.setAlpha(fill.alpha() / 2);
    painter.setBrush(fill);
    painter.drawRoundedRect(area, radius, radius);
  }
  const TextStyle& style = isChosen ? chosenText : plainText;
  const QColor ink = style.color.resolved();
  const QRectF symbol(area.center().x() - symbolSide / 2.0, area.top() + symbolTop, symbolSide, symbolSide);
  platform::drawSymbol(painter, symbol, tabData(index).toString(), {ink});
  painter.setFont(fontOf(style));
  painter.setPen(ink);
  painter.drawText(QRectF(area.left(), symbol.bottom() + 1, area.width(), titleHeight), Qt::AlignCenter,
                   tabText(index));
  if (isChosen && hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
    drawFocusRing(painter, area, AppColors::accent.resolved(), radius);
}

}  // namespace sorrel
