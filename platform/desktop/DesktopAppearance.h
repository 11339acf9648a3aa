#pragma once

#include "platform/desktop/Appearance.h"

#include <QObject>

#include <optional>

class QDBusMessage;

namespace platform {

/// Has the application follow the desktop's choice of light or dark, which desktops announce on the session
/// bus, from now on and live.
///
/// The toolkit knows nothing of that choice. So where its own palette isn't of the chosen appearance, the
/// application gets one that is, menus and tooltips included; currentAppearance() and observeAppearance() see
/// that as any change of the palette. Where the user has no preference, or the desktop doesn't say, the
/// toolkit's palette stands. Nothing waits for the desktop's answer, and nobody is started to give one: until
/// it comes, the toolkit's palette stands too.
class DesktopAppearance : public QObject {
  Q_OBJECT

 public:
  /// `accent` marks what is selected.
  explicit DesktopAppearance(const Color& accent);

 private:
  void ask();
  Q_SLOT void settingChanged(const QDBusMessage& message);
  void prefer(std::optional<Appearance> preference);

  const Color accent;
  std::optional<Appearance> given;  // that of our own palette, while it stands in for the toolkit's
};

}  // namespace platform
