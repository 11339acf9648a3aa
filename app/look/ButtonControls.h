#pragma once

#include <QSize>

class QAbstractButton;
class QPainter;
class QPushButton;
class QString;
class QStyleOptionButton;
class QWidget;

namespace sorrel {

/// Shows a symbol of the program's family before the button's text, in the text's colour.
void setSymbol(QAbstractButton& button, const QString& name);
/// Says by its colour that the button throws something away.
void setDestructive(QPushButton& button);

/// Push buttons and switches as the application's style draws them. A default button is prominent, in the
/// accent; a flat one has no ground until the pointer is on it; one with a menu shows an arrow; a check box
/// is a switch.
namespace ButtonControls {

inline constexpr int height = 26;
inline constexpr QSize switchSize{38, 24};  // with its ring
/// The room for the arrow of a button with a menu.
inline constexpr int menuIndicator = 15;

/// For contents that measure `contents`, the arrow's room included.
[[nodiscard]] QSize pushButtonSize(const QStyleOptionButton& button, const QSize& contents,
                                   const QWidget* widget);
void paintPushButton(QPainter& painter, const QStyleOptionButton& button);
void paintPushButtonLabel(QPainter& painter, const QStyleOptionButton& button, const QWidget* widget);
/// In the option's rectangle, which is `switchSize` large.
void paintSwitch(QPainter& painter, const QStyleOptionButton& button);
void paintSwitchLabel(QPainter& painter, const QStyleOptionButton& button);

}  // namespace ButtonControls
}  // namespace sorrel
