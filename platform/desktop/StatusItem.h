#pragma once

#include "platform/base/MainQueue.h"
#include "platform/desktop/MenuPresenter.h"
#include "platform/desktop/tray/TrayIcon.h"
#include "platform/desktop/tray/TrayWatch.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// The program's icon in the desktop's tray, of whichever kind that is.
///
/// It appears once the desktop has told which tray it has, and follows when that changes. Where there is none
/// for some time that is said once in the log. Where the desktop's panel draws the menus itself (a
/// StatusNotifier tray), right clicks don't reach the program: the panel shows what `menuProvider` answers.
class StatusItem {
 public:
  using Action = std::function<void(const Event&)>;
  using MenuProvider = std::function<std::shared_ptr<const Menu>()>;

  /// `absent` is called where there has been no tray for so long that none will come.
  StatusItem(const Image& image, Action action, MenuProvider menuProvider, std::function<void()> absent = {});

  void setImage(const Image& image);
  [[nodiscard]] const Image& image() const { return shownImage; }
  void setToolTip(const QString& text);
  /// To be called where `menuProvider` would give another answer now.
  void menuChanged();

  /// What a panel hangs below, in the toolkit's coordinates: the icon's frame, or the place of the last click
  /// on it where the tray doesn't tell. Before the first, or without a tray, it is on Wayland the corner of
  /// the screen in use where trays are, and absent elsewhere.
  [[nodiscard]] std::optional<QRectF> anchor() const;

  /// Opens the menu at the icon.
  void popUpMenu(const std::shared_ptr<const Menu>& menu);
  /// Closes the menu if it is open.
  void cancelTracking();

 private:
  void changeTo(const Tray& tray);
  void tellOfAbsence();

  const TrayIcon::Handlers handlers;
  Image shownImage;
  QString toolTip;
  MenuPresenter presenter;
  bool isAbsenceTold = false;
  const std::function<void()> absent;
  WorkItem absence;
  std::optional<QPoint> lastClick;  // on this icon
  std::unique_ptr<TrayIcon> icon;
  TrayWatch watch;
};

}  // namespace platform
