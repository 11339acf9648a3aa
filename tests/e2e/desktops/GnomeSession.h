#pragma once

#include "tests/e2e/desktops/DesktopSession.h"
#include "tests/support/Screen.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

namespace e2e {

/// GNOME Shell as a window that fills the screen of an X server of its own: its keyboard, its pointer and its
/// pixels are the X server's. With the tray's extension, and a user who has once allowed screenshots.
class GnomeSession : public DesktopSession {
 public:
  explicit GnomeSession(XWayland xwayland);
  ~GnomeSession() override;

  void setScreenshotsAllowed(bool areAllowed);

  [[nodiscard]] QImage picture() override { return screen.picture(); }
  void moveTo(QPoint point) override { hand.moveTo(point.x(), point.y()); }
  void turnButton(bool isDown) override;
  void turnKey(int evdevCode, bool isDown) override;

 private:
  void findXDisplay(Program& shell);

  XvfbServer server{size.width(), size.height()};
  Screen screen{server.display()};
  XTestInput hand{server.display()};
};

}  // namespace e2e
