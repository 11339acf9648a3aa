#pragma once

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "platform/base/Menu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

namespace KeyboardShortcuts {

using namespace Qt::StringLiterals;
using platform::KeyAction;
using platform::KeyOutcome;
using platform::ModifierFlag;
using platform::ModifierFlags;

/// Fresh settings, a service whose keys the test presses, and the module as at a program's start.
class ShortcutsTest : public ::testing::Test {
 protected:
  ShortcutsTest() { platform::Environment::provide<platform::HotKeyService>(service); }

  /// As if the program had ended and started again.
  void relaunch() {
    home.restart();
    platform::Environment::provide<platform::HotKeyService>(service);
  }
  QJsonValue stored(const char* name) const {
    return platform::UserDefaults::standard().object(u"KeyboardShortcuts_"_s + QString::fromLatin1(name));
  }
  void setMenuOpen(bool isOpen) {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(
        isOpen ? platform::menuDidBeginTrackingNotification : platform::menuDidEndTrackingNotification));
  }
  KeyOutcome press(const Shortcut& shortcut) { return send(KeyAction::Press, shortcut); }
  KeyOutcome release(const Shortcut& shortcut) { return send(KeyAction::Release, shortcut); }
  KeyOutcome send(KeyAction action, const Shortcut& shortcut) {
    return service->send(action, static_cast<quint32>(shortcut.carbonKeyCode()),
                         static_cast<quint32>(shortcut.carbonModifiers()));
  }

  std::shared_ptr<testing_support::HotKeyServiceDouble> service =
      std::make_shared<testing_support::HotKeyServiceDouble>();
  testing_support::ScratchHome home;
  testing_support::LogCapture log;
  const Shortcut shortcutS{Key::s, ModifierFlag::Option | ModifierFlag::Shift};
  const Shortcut shortcutD{Key::d, ModifierFlag::Option | ModifierFlag::Shift};
};

}  // namespace KeyboardShortcuts
