#pragma once

class QWidget;

namespace platform {

/// Asks for a dark frame around the window, whatever the desktop's other frames are; what lies within is the
/// window's own business. To be called before the window is shown.
void setDarkFrame(QWidget& window);

/// Shows the window in front of all others, with the keyboard in it, also where another program has that now
/// and where the user had put the window away. It tells the window manager of the user's last key or click in
/// one of the program's windows, menus or hot keys, or passes the activation token on that came from
/// elsewhere, so that one which guards the keyboard knows that this is what the user wants; the user who has
/// gone on typing elsewhere since then is left alone by such a one.
void bringToFront(QWidget& window);

}  // namespace platform
