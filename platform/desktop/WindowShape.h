#pragma once

class QWidget;

namespace platform {

/// Whether the desktop composites its windows, so that they can be translucent.
[[nodiscard]] bool isComposited();

/// Cuts the window to a rounded rectangle of its present size, with corners of `radius` points: in device
/// pixels, so that a broken scale brings no stairs. The window must have been created. Does nothing where the
/// window system doesn't cut windows.
void cutToRoundedShape(const QWidget& window, int radius);
/// Leaves all of the window to the eye alone: clicks and the pointer reach what is beneath. The window must
/// have been created.
void letPointerThrough(const QWidget& window);

}  // namespace platform
