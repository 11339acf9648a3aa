#pragma once

#include "platform/base/Event.h"
#include "platform/base/Menu.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/MenuPresenter.h"
#include "platform/desktop/TrayWatch.h"

#include <QRectF>

#include <functional>
#include <memory>
#include <optional>

class QMenu;
class QSystemTrayIcon;

namespace platform {

/// The program's icon in the desktop's tray, of whichever kind that is.
///
/// Where there is no tray, that is said once in the log, and the icon appears as soon as one comes up. Where
/// the panel draws the menus itself (a StatusNotifier tray), right clicks don't reach the program: the panel
/// shows what `menuProvider` answers.
class StatusItem {
 public:
  using Action = std::function<void(const Event&)>;
  using MenuProvider = std::function<std::shared_ptr<const Menu>()>;

  StatusItem(const Image& image, Action action, MenuProvider menuProvider);
  ~StatusItem();
  StatusItem(const StatusItem&) = delete;
  StatusItem& operator=(const StatusItem&) = delete;

  /// The image's description becomes the tooltip and the accessible name.
  void setImage(const Image& image);
  [[nodiscard]] const Image& image() const { return shownImage; }

  /// What a panel hangs below, in the toolkit's coordinates: the icon's frame, or the place of the last click
  /// on it where the tray doesn't tell; absent before the first.
  [[nodiscard]] std::optional<QRectF> anchor() const;

  /// Opens the menu at the icon.
  void popUpMenu(const std::shared_ptr<const Menu>& menu);
  /// Closes the menu if it is open.
  void cancelTracking();

 private:
  class ClickFilter;
  void appear(TrayKind kind);
  void applyImage();
  void clicked(EventType type);

  Action action;
  MenuProvider menuProvider;
  Image shownImage;
  TrayWatch tray;
  MenuPresenter presenter;
  QPoint lastClick;  // meant only once hasBeenClicked
  bool hasBeenClicked = false;
  std::unique_ptr<QMenu> exportedMenu;  // for a StatusNotifier tray
  std::unique_ptr<QSystemTrayIcon> icon;
  std::unique_ptr<ClickFilter> clickFilter;  // for an XEmbed tray
};

}  // namespace platform
