#pragma once

#include "platform/input/HotKeyService.h"
#include "platform/input/RunLoop.h"

#include <QSet>

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <vector>

namespace testing_support {

/// A queue of events and the observers that see it first.
class RunLoopDouble : public platform::RunLoop {
 public:
  std::vector<Observer> observers;
  std::deque<platform::Event> queue;

  void addObserver(const Observer& observer, Mode) override {
    if (std::ranges::find(observers, observer) == observers.end())
      observers.push_back(observer);
  }
  void removeObserver(const Observer& observer, Mode) override { std::erase(observers, observer); }
  std::optional<platform::Event> nextEvent(Mode) override {
    if (queue.empty())
      return std::nullopt;
    const platform::Event event = queue.front();
    queue.pop_front();
    return event;
  }
  void postEvent(const platform::Event& event) override { queue.push_back(event); }

  void pass() {
    for (const Observer& observer : std::vector(observers))
      (*observer)();
  }
};

/// A desktop's hot-key service whose keys a test presses. Like a real one it takes each hot key once and
/// delivers only the event types that were asked for.
class HotKeyServiceDouble : public platform::HotKeyService {
 public:
  struct HotKey {
    quint32 keyCode = 0;
    quint32 modifiers = 0;
    platform::HotKeyId id;
  };

  platform::SystemVersion version{13, 0};
  std::set<quint32> refusedKeyCodes;
  platform::HotKeyStatus installationStatus = platform::HotKeyStatuses::noError;
  std::map<platform::HotKeyReference, HotKey> live;
  EventHandler handler;
  int installations = 0;
  std::set<platform::HotKeyEventKind> types;
  RunLoopDouble runLoop;

  Registration registerHotKey(quint32 keyCode, quint32 modifiers, platform::HotKeyId id) override {
    if (find(keyCode, modifiers) || refusedKeyCodes.contains(keyCode))
      return {platform::HotKeyStatuses::hotKeyExists, {}};
    const platform::HotKeyReference reference{++lastReference};
    live[reference] = {keyCode, modifiers, id};
    return {platform::HotKeyStatuses::noError, reference};
  }
  void unregisterHotKey(platform::HotKeyReference reference) override { live.erase(reference); }
  Installation installEventHandler(EventHandler newHandler) override {
    if (installationStatus != platform::HotKeyStatuses::noError)
      return {installationStatus, {}};
    ++installations;
    handler = std::move(newHandler);
    return {platform::HotKeyStatuses::noError, platform::EventHandlerReference{7}};
  }
  void addEventTypes(platform::EventHandlerReference,
                     std::span<const platform::EventTypeSpec> added) override {
    for (const auto& type : added)
      types.insert(type.kind);
  }
  void removeEventTypes(platform::EventHandlerReference,
                        std::span<const platform::EventTypeSpec> removed) override {
    for (const auto& type : removed)
      types.erase(type.kind);
  }
  platform::SystemVersion systemVersion() const override { return version; }
  platform::RunLoop* currentRunLoop() override { return &runLoop; }

  const HotKey* find(quint32 keyCode, quint32 modifiers) const {
    const auto found = std::ranges::find_if(live, [&](const auto& entry) {
      return entry.second.keyCode == keyCode && entry.second.modifiers == modifiers;
    });
    return found == live.end() ? nullptr : &found->second;
  }
  platform::HotKeyStatus send(const platform::HotKeyEvent& event) {
    return handler && types.contains(event.kind) ? handler(&event)
                                                 : platform::HotKeyStatuses::eventNotHandled;
  }
  /// A press or release anywhere on the desktop.
  platform::HotKeyStatus hotKey(platform::HotKeyEventKind kind, quint32 keyCode, quint32 modifiers) {
    const HotKey* const pressed = find(keyCode, modifiers);
    if (!pressed)
      return platform::HotKeyStatuses::eventNotHandled;
    platform::HotKeyEvent event;
    event.kind = kind;
    event.hotKeyId = pressed->id;
    return send(event);
  }
  platform::HotKeyStatus press(quint32 keyCode, quint32 modifiers) {
    return hotKey(platform::HotKeyEventKind::HotKeyPressed, keyCode, modifiers);
  }

 private:
  quint64 lastReference = 0;
};

}  // namespace testing_support
