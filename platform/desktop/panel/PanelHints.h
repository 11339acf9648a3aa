#pragma once

#include <QPointF>

#include <optional>

class QWidget;

namespace platform {

/// Tells the window manager what kind of window a panel is: not for the task bar or the pager, and the
/// `margin` of points on each side isn't part of it: not to be snapped to, kept on the screen, or given a
/// second shadow. For a window that has been created.
void tellWindowManager(const QWidget& window, int margin);

/// Where the window manager has put the window: its upper left corner, in the toolkit's coordinates. Absent
/// where the window system doesn't tell.
[[nodiscard]] std::optional<QPointF> placeOf(const QWidget& window);

/// Whether the keys go to the window, or will again once nobody holds the keyboard any longer.
[[nodiscard]] bool hasKeyboard(const QWidget& window);

enum class KeyboardNews {
  None,
  Held,       // somebody holds the keyboard for a while
  GivenBack,  // and no longer
  Lost,       // another window gets it once it is no longer held
};
/// What a native event of a window, as QWidget::nativeEvent() has it, says of its keyboard.
[[nodiscard]] KeyboardNews keyboardNews(const void* event);

}  // namespace platform
