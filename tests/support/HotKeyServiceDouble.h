#pragma once

#include "platform/input/HotKeyService.h"

#include <algorithm>
#include <map>
#include <set>

namespace testing_support {

/// A desktop's hot-key service whose keys a test presses. Like a real one it takes each hot key once and
/// delivers only the kind of keys that is listened to.
class HotKeyServiceDouble : public platform::HotKeyService {
 public:
  std::set<quint32> refusedKeyCodes;
  bool installs = true;
  std::map<platform::HotKeyReference, platform::HotKey> live;
  EventHandler handler;
  int installations = 0;
  Keys listening = Keys::None;

  platform::Result<platform::HotKeyReference> registerHotKey(const platform::HotKey& hotKey) override {
    if (find(hotKey.keyCode, hotKey.modifiers) || refusedKeyCodes.contains(hotKey.keyCode))
      return platform::Error{QStringLiteral("taken"), platform::HotKeyStatuses::hotKeyExists};
    const platform::HotKeyReference reference{++lastReference};
    live[reference] = hotKey;
    return reference;
  }
  void unregisterHotKey(platform::HotKeyReference reference) override { live.erase(reference); }
  platform::Result<> installEventHandler(EventHandler newHandler) override {
    if (!installs)
      return platform::Error{QStringLiteral("not now")};
    ++installations;
    handler = std::move(newHandler);
    return {};
  }
  void listen(Keys keys) override { listening = keys; }
  platform::HotKeyState state() const override { return present; }
  platform::Subscription observeState(const std::function<void()>& block) override {
    return observers.add(block);
  }
  /// The desktop has come to another answer.
  void setState(const platform::HotKeyState& state) {
    present = state;
    observers.tell();
  }

  const platform::HotKey* find(quint32 keyCode, quint32 modifiers) const {
    const auto found = std::ranges::find_if(live, [&](const auto& entry) {
      return entry.second.keyCode == keyCode && entry.second.modifiers == modifiers;
    });
    return found == live.end() ? nullptr : &found->second;
  }
  /// A press or release anywhere on the desktop.
  platform::KeyOutcome send(platform::KeyAction action, quint32 keyCode, quint32 modifiers) {
    const platform::HotKey* const pressed = find(keyCode, modifiers);
    return pressed && listening == Keys::Grabbed ? handler.onHotKey({action, pressed->id})
                                                 : platform::KeyOutcome::Passed;
  }
  platform::KeyOutcome press(quint32 keyCode, quint32 modifiers) {
    return send(platform::KeyAction::Press, keyCode, modifiers);
  }
  /// A press or release on its way to an open menu.
  platform::KeyOutcome sendRaw(platform::KeyAction action, quint32 keyCode, quint32 modifiers) {
    return listening == Keys::Raw ? handler.onRawKey({action, keyCode, modifiers})
                                  : platform::KeyOutcome::Passed;
  }

 private:
  quint64 lastReference = 0;
  platform::HotKeyState present;
  platform::Listeners<> observers;
};

}  // namespace testing_support
