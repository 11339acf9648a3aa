#pragma once

#include "platform/base/Menu.h"

#include <QPointer>

#include <memory>

class QMenu;
class QPoint;

namespace platform {

class MenuLayer;

/// Shows plain-data menus.
///
/// While one is open, the two notifications of platform/base/Menu.h tell so. A key equivalent is reached with
/// Control as well as with the logo key, since Control is what this desktop's users press for a menu's
/// commands.
class MenuPresenter {
 public:
  MenuPresenter();
  ~MenuPresenter();
  MenuPresenter(const MenuPresenter&) = delete;
  MenuPresenter& operator=(const MenuPresenter&) = delete;

  /// Opens the menu with its upper left corner at `position`, or where it fits;
  /// returns at once. A menu that is open already closes.
  void popUp(const std::shared_ptr<const Menu>& menu, const QPoint& position);
  /// Closes the menu if one is open; nothing in it is chosen.
  void cancelTracking();

 private:
  QPointer<QMenu> open;
  std::unique_ptr<MenuLayer> beneath;  // where a menu needs a window to open from
};

}  // namespace platform
