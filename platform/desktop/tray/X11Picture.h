#pragma once

#include <QIcon>
#include <QSize>

struct xcb_connection_t;

namespace platform {

/// The look of an X window: which of the server's kinds of pixels it has.
struct X11Look {
  quint32 visual = 0;
  int depth = 0;
  /// Whether its pixels can be transparent.
  bool hasAlpha = false;

  /// That of the visual, or of the screen itself where there is no such visual.
  static X11Look of(xcb_connection_t* connection, quint32 visual);
};

/// Draws an icon on an X window over the background that the window has. The X server does the drawing, so
/// the background needn't be known here.
class X11Picture {
 public:
  X11Picture(xcb_connection_t* connection, quint32 window, const X11Look& look);
  ~X11Picture();
  X11Picture(const X11Picture&) = delete;
  X11Picture& operator=(const X11Picture&) = delete;

  /// Clears the window, and draws the icon in its middle, as large as fits; sizes in device pixels.
  void draw(const QIcon& icon, const QSize& windowSize) const;
  /// What the server calls it: its complaints name that.
  [[nodiscard]] quint32 id() const { return target; }

 private:
  xcb_connection_t* const connection;
  const quint32 window;
  quint32 target = 0;      // the window, for drawing
  quint32 iconFormat = 0;  // of pixels with premultiplied alpha; 0 where the server can't blend
};

}  // namespace platform
