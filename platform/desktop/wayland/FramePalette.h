#pragma once

class QWidget;
class QByteArray;

namespace platform {

/// Has the compositor draw the window's frame in the colours of that file, as long as the window lives, where
/// it draws frames and knows of such files. Called before the window is shown.
void setFramePalette(QWidget& window, const QByteArray& path);

}  // namespace platform
