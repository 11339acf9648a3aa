#pragma once

#include "platform/wayland/WaylandGlobals.h"
#include "tests/e2e/desktops/DesktopSession.h"

#include <QDBusConnection>

struct org_kde_kwin_fake_input;

namespace e2e {

/// KWin without a display. Its pixels and its input come by what it offers to programs that it trusts, and
/// here it trusts all with the input.
class KWinSession : public DesktopSession {
 public:
  KWinSession();
  ~KWinSession() override;

  [[nodiscard]] QImage picture() override;
  void moveTo(QPoint point) override;
  void turnButton(bool isDown) override;
  void turnKey(int evdevCode, bool isDown) override;

 private:
  void roundTrip();

  QDBusConnection bus;
  platform::WaylandObject<wl_display> display{nullptr, {wl_display_disconnect}};
  std::unique_ptr<platform::WaylandGlobals> globals;
  platform::WaylandObject<org_kde_kwin_fake_input> input;
};

}  // namespace e2e
