#pragma once

class QRect;
class QWidget;

namespace platform {

/// Whether the desktop composites its windows, so that they can be translucent.
[[nodiscard]] bool isComposited();

// All below are for windows that have been created, and do nothing where the window system doesn't know of
// such things. Areas are in the window's points, and end at device pixels, so that a broken scale brings no
// stairs.

/// Cuts the window to a rounded rectangle of its present size.
void cutToRoundedShape(const QWidget& window, int radius);
void cutToRoundedShape(const QWidget& window, const QRect& area, int radius);
/// Shows the whole window again.
void removeShape(const QWidget& window);
/// Clicks outside of the area go to what lies beneath the window.
void takeClicksOnlyIn(const QWidget& window, const QRect& area);
/// Leaves all of the window to the eye alone: clicks and the pointer reach what is beneath.
void letPointerThrough(const QWidget& window);

/// Whether the window manager blurs what is seen through a window that asks for it.
[[nodiscard]] bool canBlurBehind();
/// The area counts from where the window manager takes the window to begin.
void blurBehind(const QWidget& window, const QRect& area, int radius);

}  // namespace platform
