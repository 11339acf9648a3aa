#include "app/look/LookStyle.h"

#include "app/look/LookColors.h"
#include "app/look/MenuRow.h"
#include "app/look/PopupSurface.h"
#include "app/look/TextStyle.h"
#include "platform/desktop/WindowShape.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionMenuItem>

namespace sorrel {
namespace {

constexpr TextStyle menuText{13, QFont::Normal, LookColors::label};
constexpr TextStyle tipText{12, QFont::Normal, LookColors::label};
constexpr int tipPadding = 5;
constexpr int submenuOverlap = 3;

bool isTip(const QWidget* widget) {
  return widget->inherits("QTipLabel");
}

bool isMenu(const QWidget* widget) {
  return qobject_cast<const QMenu*>(widget);
}

/// What holds the list of a combo box. Other lists may be windows of their own.
bool isList(const QWidget* widget) {
  return widget && widget->inherits("QComboBoxPrivateContainer");
}

/// A popup is a window, and windows don't inherit a palette.
void takeAppearance(QWidget& popup) {
  const QWidget* const owner = popup.parentWidget();
  const auto appearance = owner ? platform::appearanceOf(owner->palette()) : platform::currentAppearance();
  QPalette palette = appearance == platform::currentAppearance()
                         ? QApplication::palette()
                         : platform::paletteOf(appearance, AppColors::accent);
  if (isTip(&popup))
    palette.setColor(QPalette::ToolTipText, tipText.color.resolved(appearance));
  if (isList(&popup)) {
    // The toolkit fills the rows with this, over the sheet.
    palette.setColor(QPalette::Window, LookColors::popup.resolved(appearance));
    popup.findChild<QAbstractItemView*>()->setPalette(palette);
  }
  popup.setPalette(palette);
}

/// The list lies where the sheet belongs, so the sheet's shadow lies around it.
void makeRoomForShadow(QWidget& list) {
  const int margin = PopupSurface::margin(&list);
  list.setGeometry(list.geometry().adjusted(-margin, -margin, margin, margin));
  list.setContentsMargins(margin, margin, margin, margin);
}

/// The toolkit has put the corner of the whole window where the corner of the sheet belongs. Which corner
/// that is depends on where there was room; it is the one at the pointer. A submenu's first row is level with
/// its parent's row already.
void placeSheet(QWidget& menu) {
  const int margin = PopupSurface::margin(&menu);
  const QPoint middle = menu.geometry().center(), pointer = QCursor::pos();
  const int across = pointer.x() < middle.x() ? -margin : margin;
  const int down = pointer.y() < middle.y() ? -margin : margin;
  menu.move(menu.pos() + QPoint(across, isMenu(menu.parentWidget()) ? 0 : down));
}

}  // namespace

void LookStyle::polish(QWidget* widget) {
  ControlStyle::polish(widget);
  if (auto* const list = qobject_cast<QAbstractItemView*>(widget); list && isList(list->parentWidget()))
    list->viewport()->setAutoFillBackground(false);  // the sheet is below
  if (qobject_cast<QDialog*>(widget))
    widget->setAttribute(Qt::WA_StyledBackground);
  const bool isTooltip = isTip(widget);
  if (!isTooltip && !isMenu(widget) && !isList(widget))
    return;
  PopupSurface::prepare(*widget);
  widget->setFont(fontOf(isTooltip ? tipText : menuText));
  widget->installEventFilter(this);
}

bool LookStyle::eventFilter(QObject* watched, QEvent* event) {
  auto& popup = *static_cast<QWidget*>(watched);
  // The toolkit makes a tip's window anew after it has been shown, and the new one has no shape.
  const bool isNewTip = event->type() == QEvent::Paint && isTip(&popup);
  if (event->type() == QEvent::Show || event->type() == QEvent::Resize || isNewTip) {
    if (event->type() == QEvent::Show && !event->spontaneous()) {
      takeAppearance(popup);
      if (isMenu(&popup))
        placeSheet(popup);
      if (isList(&popup))
        makeRoomForShadow(popup);
    }
    PopupSurface::fit(popup);
    if (isTip(&popup))
      platform::letPointerThrough(popup);  // to what it lies on
  }
  return ControlStyle::eventFilter(watched, event);
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_MenuPanelWidth:
      return PopupSurface::margin(widget);
    case PM_MenuHMargin:
      return 0;
    case PM_MenuVMargin:
      return MenuRow::edge;
    case PM_SubMenuOverlap:
      return -submenuOverlap;
    case PM_ToolTipLabelFrameWidth:
      return PopupSurface::margin(widget) + tipPadding;
    default:
      return ControlStyle::pixelMetric(metric, option, widget);
  }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:  // the window's shape is made in device pixels instead
    case SH_Menu_AllowActiveAndDisabled:
      return 0;
    case SH_Menu_MouseTracking:
    case SH_Menu_Scrollable:
    case SH_Menu_SupportsSections:
      return 1;
    case SH_ToolTipLabel_Opacity:
      return 255;
    default:
      return ControlStyle::styleHint(hint, option, widget, answer);
  }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  if (type == CT_MenuItem)
    if (const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
      return MenuRow::size(*row, size);
  return ControlStyle::sizeFromContents(type, option, size, widget);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (widget && (element == PE_PanelMenu || element == PE_PanelTipLabel))
    PopupSurface::paint(*painter, *widget);
  else if (element == PE_Widget && qobject_cast<const QDialog*>(widget))
    painter->fillRect(option->rect, LookColors::ground.resolved(platform::appearanceOf(option->palette)));
  else if (element != PE_FrameMenu)  // part of the surface
    ControlStyle::drawPrimitive(element, option, painter, widget);
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (row && element == CE_MenuItem && qobject_cast<const QComboBox*>(widget)) {
    QStyleOptionMenuItem own(*row);
    own.palette = widget->palette();  // the toolkit has given it that of all menus
    if (own.icon.isNull())
      own.maxIconWidth = 0;
    MenuRow::paint(*painter, own);
  } else if (row && element == CE_MenuItem)
    MenuRow::paint(*painter, *row);
  else if (row && element == CE_MenuScroller)
    MenuRow::paintScroller(*painter, *row);
  else if (element != CE_MenuEmptyArea)
    ControlStyle::drawControl(element, option, painter, widget);
}

}  // namespace sorrel
