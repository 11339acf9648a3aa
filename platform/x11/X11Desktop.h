#pragma once

#include <QMargins>
#include <QRect>

#include <optional>
#include <vector>

namespace platform {

/// A window that stands at an edge of the X screen and keeps a strip of it free of other windows.
struct X11Bar {
  /// In device pixels of the root window.
  QRect frame;
  /// How deep each strip is, from the root window's edges.
  QMargins strut;
};

/// Those that the window manager lists; none without an X server or a window manager.
[[nodiscard]] std::vector<X11Bar> x11Bars();

/// The window that the user works in, as the window manager tells, in device pixels of the root window.
[[nodiscard]] std::optional<QRect> x11ActiveWindow();

/// Where a window is, in device pixels of the root window; absent if it is gone.
[[nodiscard]] std::optional<QRect> x11FrameOf(quint32 window);

/// In device pixels.
[[nodiscard]] QSize x11RootSize();

}  // namespace platform
