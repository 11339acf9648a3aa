#include "app/look/ChoiceButton.h"

namespace sorrel {

ChoiceButton::ChoiceButton(const QSize& size, QWidget* parent) : QAbstractButton(parent) {
  setFixedSize(size);
  setCheckable(true);
  setAutoExclusive(true);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
}

void ChoiceButton::setChosen(bool isChosen) {
  if (isChosen == isChecked())
    return;
  setAutoExclusive(false);  // the group would keep one
  setChecked(isChosen);
  setAutoExclusive(true);
}

void ChoiceButton::setHelp(const QString& text) {
  setToolTip(text);
  setAccessibleName(text);
}

}  // namespace sorrel
