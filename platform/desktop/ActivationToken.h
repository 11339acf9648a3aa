#pragma once

#include <QByteArray>

class QWidget;

namespace platform {

/// The desktop's word that it was the user who asked for what the program does next, given to whoever starts
/// the program or calls it: an activation token of Wayland, or a startup identifier of X11. With it a window
/// may take the keyboard from another program. Main thread only.
namespace ActivationToken {

/// The one that this process was started with, of which its own children then learn nothing; empty if none.
[[nodiscard]] QByteArray fromEnvironment();

/// Keeps it for the next window that asks for the keyboard; an empty one takes away what was kept.
void keep(const QByteArray& token);
/// What was kept, for one use.
[[nodiscard]] QByteArray take();

}  // namespace ActivationToken

/// Asks for the keyboard for a window that is shown, by the token that was kept if there is one. Without, a
/// hot key or the user's own command has brought it, of which not all desktops tell: then by one that this
/// program gets by itself, where it can.
void askForKeyboard(QWidget& window);

}  // namespace platform
