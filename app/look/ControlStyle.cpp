#include "app/look/ControlStyle.h"

#include "app/look/ButtonControls.h"
#include "app/look/FieldControls.h"
#include "app/look/SliderControls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOption>

namespace sorrel {
namespace {

template <typename... Kinds>
bool isOneOf(const QWidget* widget) {
  return (qobject_cast<const Kinds*>(widget) || ...);
}

/// A combo box has drawn the frame around the field in it.
bool isFramed(const QStyleOption* option) {
  const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return frame && frame->lineWidth > 0;
}

}  // namespace

ControlStyle::ControlStyle() : QProxyStyle(QStringLiteral("fusion")) {
}

void ControlStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (isOneOf<QAbstractButton, QComboBox, QLineEdit, QAbstractSlider>(widget))
    widget->setAttribute(Qt::WA_Hover);
  if (isOneOf<QScrollBar>(widget))
    widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_SliderLength:
      return SliderControls::handleSide;
    case PM_SliderThickness:
    case PM_SliderControlThickness:
      return SliderControls::thickness;
    case PM_ScrollBarExtent:
      return SliderControls::scrollBarWidth;
    case PM_IndicatorWidth:
      return ButtonControls::switchSize.width();
    case PM_IndicatorHeight:
      return ButtonControls::switchSize.height();
    case PM_CheckBoxLabelSpacing:
      return 8;
    case PM_MenuButtonIndicator:
      return ButtonControls::menuIndicator;
    case PM_ButtonDefaultIndicator:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_Slider_AbsoluteSetButtons:  // a click on a slider's way takes the handle there
      return Qt::LeftButton;
    case SH_Slider_PageSetButtons:
    case SH_EtchDisabledText:
    case SH_ScrollBar_Transient:
    case SH_ScrollView_FrameOnlyAroundContents:
      return 0;
    case SH_ComboBox_Popup:  // a menu with all choices
      return 1;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const {
  switch (type) {
    case CT_PushButton:
      if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option))
        return ButtonControls::pushButtonSize(*button, size, widget);
      break;
    case CT_ComboBox:
      return FieldControls::comboBoxSize(size);
    case CT_LineEdit:
      if (isFramed(option))
        return {size.width() + 2 * FieldControls::padding,
                std::max(ButtonControls::height, size.height() + 8)};
      break;
    default:
      break;
  }
  return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect ControlStyle::subElementRect(SubElement element, const QStyleOption* option,
                                   const QWidget* widget) const {
  switch (element) {
    case SE_LineEditContents:
      // The field itself keeps two more points on either side.
      if (isFramed(option))
        return option->rect.adjusted(FieldControls::padding - 2, 1, 2 - FieldControls::padding, -1);
      break;
    case SE_PushButtonContents:
    case SE_PushButtonFocusRect:
      return option->rect;
    default:
      break;
  }
  return QProxyStyle::subElementRect(element, option, widget);
}

QRect ControlStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const {
  if (const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
    if (control == CC_Slider && part == SC_SliderGroove)
      return slider->rect;  // all of it takes clicks
    if (control == CC_Slider && part == SC_SliderHandle)
      return SliderControls::sliderHandle(*slider);
    if (control == CC_ScrollBar && part == SC_ScrollBarSlider)
      return SliderControls::scrollBarHandle(*slider);
    if (control == CC_ScrollBar && part == SC_ScrollBarGroove)
      return slider->rect;
    if (control == CC_ScrollBar && (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine))
      return {};
  }
  if (const auto* const box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      box && control == CC_ComboBox) {
    if (part == SC_ComboBoxEditField)
      return FieldControls::comboBoxText(*box);
    if (part == SC_ComboBoxArrow)
      return FieldControls::comboBoxArrow(*box);
    if (part == SC_ComboBoxListBoxPopup)
      return FieldControls::comboBoxList(*box);
    if (part == SC_ComboBoxFrame)
      return box->rect;
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

void ControlStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  switch (element) {
    case PE_PanelLineEdit:
      if (isFramed(option))
        FieldControls::paintLineEdit(*painter, *option);
      return;
    case PE_IndicatorCheckBox:
      if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        ButtonControls::paintSwitch(*painter, *button);
        return;
      }
      break;
    case PE_FrameFocusRect:  // these have their own ring
      if (isOneOf<QAbstractButton, QComboBox, QAbstractSlider>(widget))
        return;
      break;
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ControlStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
    if (element == CE_PushButton) {
      ButtonControls::paintPushButton(*painter, *button);
      return ButtonControls::paintPushButtonLabel(*painter, *button, widget);
    }
    if (element == CE_PushButtonBevel)
      return ButtonControls::paintPushButton(*painter, *button);
    if (element == CE_PushButtonLabel)
      return ButtonControls::paintPushButtonLabel(*painter, *button, widget);
    if (element == CE_CheckBoxLabel)
      return ButtonControls::paintSwitchLabel(*painter, *button);
  }
  if (const auto* const box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      box && element == CE_ComboBoxLabel)
    return FieldControls::paintComboBoxLabel(*painter, *box);
  QProxyStyle::drawControl(element, option, painter, widget);
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  if (const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
    if (control == CC_Slider)
      return SliderControls::paintSlider(*painter, *slider);
    if (control == CC_ScrollBar)
      return SliderControls::paintScrollBar(*painter, *slider);
  }
  if (const auto* const box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      box && control == CC_ComboBox)
    return FieldControls::paintComboBox(*painter, *box);
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace sorrel
