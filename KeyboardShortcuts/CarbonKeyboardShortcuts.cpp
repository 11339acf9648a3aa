#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"

#include "platform/base/Environment.h"
#include "platform/base/Log.h"
#include "platform/input/SymbolicHotKeys.h"

#include <algorithm>
#include <limits>
#include <map>

namespace KeyboardShortcuts::CarbonKeyboardShortcuts {
namespace {

using platform::HotKeyEvent;
using platform::HotKeyService;
using platform::KeyAction;
using platform::KeyOutcome;
using platform::RawKeyEvent;
using Keys = HotKeyService::Keys;

constexpr quint32 signature = 0x53534B53;

struct HotKey {
  Shortcut shortcut;
  Name name;
  std::optional<platform::HotKeyReference> carbonHotKey;  // absent while hot keys are handed back
  Callback onKeyDown;
  Callback onKeyUp;
};

void unregisterWithService(HotKey& hotKey) {
  if (hotKey.carbonHotKey)
    HotKeyService::current().unregisterHotKey(*hotKey.carbonHotKey);
  hotKey.carbonHotKey.reset();
}

/// All there is; gives everything back at its end.
struct Statics {
  Statics() { HotKeyService::current(); }  // which thereby outlives this
  ~Statics() {
    softUnregisterAll();
    HotKeyService::current().listen(Keys::None);
  }
  Statics(const Statics&) = delete;
  Statics& operator=(const Statics&) = delete;

  void softRegisterAll();
  void softUnregisterAll() {
    for (const auto& [id, hotKey] : hotKeys)
      unregisterWithService(*hotKey);
  }

  qint64 hotKeyId = 0;  // the last one given out; none is used twice
  std::map<qint64, std::shared_ptr<HotKey>> hotKeys;
  bool hasEventHandler = false;
  Keys wanted = Keys::Grabbed;
};

Statics& statics() {
  return *platform::Environment::shared<Statics>([] { return std::make_shared<Statics>(); });
}

/// nullopt if the service refuses, which is logged.
std::optional<platform::HotKeyReference> registerWithService(const Shortcut& shortcut, const Name& name,
                                                             qint64 id) {
  platform::Result<platform::HotKeyReference> result =
      platform::Error{QStringLiteral("no such key"), platform::HotKeyStatuses::invalidHotKey};
  // The service's numbers are narrower than a stored one may be.
  if (shortcut.carbonKeyCode() >= 0 && shortcut.carbonKeyCode() <= std::numeric_limits<quint32>::max())
    result = HotKeyService::current().registerHotKey({static_cast<quint32>(shortcut.carbonKeyCode()),
                                                      static_cast<quint32>(shortcut.carbonModifiers()),
                                                      {signature, static_cast<quint32>(id)},
                                                      name.rawValue(),
                                                      name.purpose().text,
                                                      name.purpose().option});
  if (result)
    return *result;
  platform::printLine(QStringLiteral("Error registering hotkey %1: %2")
                          .arg(shortcut.presentableDescription())
                          .arg(result.error().number));
  return std::nullopt;
}

void Statics::softRegisterAll() {
  for (const auto& [id, hotKey] : hotKeys)
    if (!hotKey->carbonHotKey)
      hotKey->carbonHotKey = registerWithService(hotKey->shortcut, hotKey->name, id);
}

/// The record is held, because a callback may drop it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
KeyOutcome call(const std::shared_ptr<HotKey> hotKey, KeyAction action) {
  (action == KeyAction::Press ? hotKey->onKeyDown : hotKey->onKeyUp)(hotKey->shortcut);
  return KeyOutcome::Taken;
}

KeyOutcome handleHotKeyEvent(const HotKeyEvent& event) {
  const auto& hotKeys = statics().hotKeys;
  const auto found = hotKeys.find(event.id.id);
  const bool isOurs = event.id.signature == signature && found != hotKeys.end();
  return isOurs ? call(found->second, event.action) : KeyOutcome::Passed;
}

KeyOutcome handleRawKeyEvent(const RawKeyEvent& event) {
  const Shortcut shortcut(event.keyCode, event.modifiers);
  const auto& hotKeys = statics().hotKeys;
  const auto found =
      std::ranges::find_if(hotKeys, [&](const auto& entry) { return entry.second->shortcut == shortcut; });
  return found == hotKeys.end() ? KeyOutcome::Passed : call(found->second, event.action);
}

}  // namespace

void registerShortcut(const Shortcut& shortcut, const Name& name, Callback onKeyDown, Callback onKeyUp) {
  Statics& all = statics();
  const qint64 id = ++all.hotKeyId;
  const auto reference = registerWithService(shortcut, name, id);
  if (!reference)
    return;
  all.hotKeys.emplace(id, std::make_shared<HotKey>(
                              HotKey{shortcut, name, reference, std::move(onKeyDown), std::move(onKeyUp)}));
  if (all.hasEventHandler)
    return;
  // Where it can't be installed, the next registration tries again.
  all.hasEventHandler =
      bool(HotKeyService::current().installEventHandler({handleHotKeyEvent, handleRawKeyEvent}));
  updateEventHandler(all.wanted);
}

void unregisterShortcut(const Shortcut& shortcut) {
  std::erase_if(statics().hotKeys, [&](const auto& entry) {
    const bool isMeant = entry.second->shortcut == shortcut;
    if (isMeant)
      unregisterWithService(*entry.second);
    return isMeant;
  });
}

void updateEventHandler(Keys wanted) {
  Statics& all = statics();
  all.wanted = wanted;
  if (!all.hasEventHandler)
    return;
  if (wanted == Keys::Grabbed)
    all.softRegisterAll();
  else
    all.softUnregisterAll();
  HotKeyService::current().listen(wanted);
}

QList<Shortcut> system() {
  QList<Shortcut> shortcuts;
  for (const platform::SymbolicHotKey& hotKey : platform::copySymbolicHotKeys())
    if (hotKey.isEnabled)
      shortcuts << Shortcut(hotKey.keyCode, hotKey.modifiers);
  return shortcuts;
}

}  // namespace KeyboardShortcuts::CarbonKeyboardShortcuts
