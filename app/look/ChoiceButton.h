#pragma once

#include <QAbstractButton>

namespace sorrel {

/// One of several things beside each other in one parent, of which one is chosen or none: a tool, a colour.
/// Tab reaches the group and the arrow keys go along it; a click takes the keyboard from nobody. How it looks
/// is its subclass's part.
class ChoiceButton : public QAbstractButton {
 public:
  ChoiceButton(const QSize& size, QWidget* parent);

  void setChosen(bool isChosen);
  /// The tooltip, which is the accessible name too.
  void setHelp(const QString& text);

  [[nodiscard]] QSize sizeHint() const override { return size(); }

 protected:
  [[nodiscard]] bool isHovered() const { return underMouse() && isEnabled(); }
};

}  // namespace sorrel
