#pragma once

#include "platform/base/Event.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace platform {

struct Menu;

/// One row of a menu as plain data. A separator has no title. An empty `keyEquivalent` means none; its
/// modifiers are Command alone unless said otherwise.
struct MenuItem {
  QString title;
  QString keyEquivalent;
  ModifierFlags keyEquivalentModifierMask = ModifierFlag::Command;
  std::function<void()> action;
  bool isEnabled = true;
  bool isSeparator = false;
  std::shared_ptr<Menu> submenu;

  static MenuItem separator() {
    MenuItem item;
    item.isSeparator = true;
    return item;
  }
};

/// A menu as plain data: what it says and does, not how it is drawn. platform/desktop shows it.
struct Menu {
  std::vector<MenuItem> items;
};

/// Posted on the default NotificationCenter around the time in which a menu of this program is open.
inline constexpr char menuDidBeginTrackingNotification[] = "NSMenuDidBeginTrackingNotification";
inline constexpr char menuDidEndTrackingNotification[] = "NSMenuDidEndTrackingNotification";

}  // namespace platform
