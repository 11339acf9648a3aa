#pragma once

#include "platform/base/Event.h"
#include "platform/base/Menu.h"
#include "platform/desktop/Image.h"

#include <QPoint>
#include <QRectF>

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// The program's icon in a tray of one kind. It is in that tray as long as it lives.
class TrayIcon {
 public:
  /// What an icon asks of its owner.
  struct Handlers {
    /// The user has clicked, with the pointer at `place` or with a key; absent where nobody knows.
    std::function<void(const Event&, const std::optional<QPoint>& place)> clicked;
    /// The menu as it is now, for a tray that shows it itself.
    std::function<std::shared_ptr<const Menu>()> menu;
  };

  TrayIcon() = default;
  virtual ~TrayIcon() = default;
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;

  virtual void setImage(const Image& image) = 0;
  virtual void setToolTip(const QString& text) = 0;
  /// What the menu says may be another now.
  virtual void menuChanged() {}
  /// Where the icon is; absent where the tray doesn't tell, or doesn't show it.
  [[nodiscard]] virtual std::optional<QRectF> frame() const { return std::nullopt; }
};

}  // namespace platform
