#pragma once

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "platform/base/Log.h"
#include "platform/base/Menu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {

using namespace Qt::StringLiterals;
using platform::ModifierFlag;
using platform::ModifierFlags;

/// Fresh settings, a service whose keys the test presses, and the module as at a program's start.
class ShortcutsTest : public ::testing::Test {
 protected:
  ShortcutsTest() {
    platform::UserDefaults::resetStandard();
    platform::HotKeyService::setCurrent(service);
  }
  ~ShortcutsTest() override {
    resetStatics();
    platform::HotKeyService::setCurrent(nullptr);
    platform::UserDefaults::resetStandard();
  }
  ShortcutsTest(const ShortcutsTest&) = delete;
  ShortcutsTest& operator=(const ShortcutsTest&) = delete;

  /// As if the program had ended and started again.
  void relaunch() {
    resetStatics();
    platform::UserDefaults::resetStandard();
  }
  QJsonValue stored(const char* name) const {
    return platform::UserDefaults::standard().object(u"KeyboardShortcuts_"_s + QString::fromLatin1(name));
  }
  void setMenuOpen(bool isOpen) {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(
        isOpen ? platform::menuDidBeginTrackingNotification : platform::menuDidEndTrackingNotification));
  }
  platform::HotKeyStatus press(const Shortcut& shortcut) {
    return send(platform::HotKeyEventKind::HotKeyPressed, shortcut);
  }
  platform::HotKeyStatus release(const Shortcut& shortcut) {
    return send(platform::HotKeyEventKind::HotKeyReleased, shortcut);
  }
  platform::HotKeyStatus send(platform::HotKeyEventKind kind, const Shortcut& shortcut) {
    return service->hotKey(kind, static_cast<quint32>(shortcut.carbonKeyCode()),
                           static_cast<quint32>(shortcut.carbonModifiers()));
  }

  const testing_support::ScratchHome home;
  platform::LogCapture log;
  std::shared_ptr<testing_support::HotKeyServiceDouble> service =
      std::make_shared<testing_support::HotKeyServiceDouble>();
  const Shortcut shortcutS{Key::s, ModifierFlag::Option | ModifierFlag::Shift};
  const Shortcut shortcutD{Key::d, ModifierFlag::Option | ModifierFlag::Shift};
};

}  // namespace KeyboardShortcuts
