#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Modifiers.h"
#include "KeyboardShortcuts/RunLoopLocalEventMonitor.h"
#include "platform/base/Log.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/SymbolicHotKeys.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>

namespace KeyboardShortcuts::CarbonKeyboardShortcuts {
namespace {

using platform::EventTypeSpec;
using platform::HotKeyEvent;
using platform::HotKeyEventKind;
using platform::HotKeyService;
using platform::HotKeyStatus;
using platform::keyboardEventClass;
namespace Statuses = platform::HotKeyStatuses;

constexpr quint32 signature = 0x53534B53;
constexpr std::array hotKeyEventTypes{EventTypeSpec{keyboardEventClass, HotKeyEventKind::HotKeyPressed},
                                      EventTypeSpec{keyboardEventClass, HotKeyEventKind::HotKeyReleased}};
constexpr std::array rawKeyEventTypes{EventTypeSpec{keyboardEventClass, HotKeyEventKind::RawKeyDown},
                                      EventTypeSpec{keyboardEventClass, HotKeyEventKind::RawKeyUp}};

struct HotKey {
  Shortcut shortcut;
  qint64 carbonHotKeyId = 0;
  std::optional<platform::HotKeyReference> carbonHotKey;  // absent while hot keys are handed back
  Callback onKeyDown;
  Callback onKeyUp;
};

struct Statics {
  qint64 hotKeyId = 0;  // the last one given out; none is used twice
  std::map<qint64, std::shared_ptr<HotKey>> hotKeys;
  std::optional<platform::EventHandlerReference> eventHandler;
  std::unique_ptr<RunLoopLocalEventMonitor> monitor;
};

Statics& statics() {
  static Statics all;
  return all;
}

/// nullopt if the service refuses, which is logged.
std::optional<platform::HotKeyReference> registerWithService(const Shortcut& shortcut, qint64 id) {
  HotKeyService::Registration result;
  // The service's numbers are narrower than a stored one may be.
  if (shortcut.carbonKeyCode() >= 0 && shortcut.carbonKeyCode() <= std::numeric_limits<quint32>::max())
    result = HotKeyService::current().registerHotKey(static_cast<quint32>(shortcut.carbonKeyCode()),
                                                     static_cast<quint32>(shortcut.carbonModifiers()),
                                                     {signature, static_cast<quint32>(id)});
  if (result.status == Statuses::noError && result.reference)
    return result.reference;
  platform::printLine(QStringLiteral("Error registering hotkey %1: %2")
                          .arg(shortcut.presentableDescription())
                          .arg(result.status));
  return std::nullopt;
}

void unregisterWithService(HotKey& hotKey) {
  if (hotKey.carbonHotKey)
    HotKeyService::current().unregisterHotKey(*hotKey.carbonHotKey);
  hotKey.carbonHotKey.reset();
}

void softRegisterAll() {
  for (const auto& [id, hotKey] : statics().hotKeys)
    if (!hotKey->carbonHotKey)
      hotKey->carbonHotKey = registerWithService(hotKey->shortcut, id);
}

void softUnregisterAll() {
  for (const auto& [id, hotKey] : statics().hotKeys)
    unregisterWithService(*hotKey);
}

HotKeyStatus handleHotKeyEvent(const HotKeyEvent& event) {
  if (event.hotKeyId.status != Statuses::noError)
    return event.hotKeyId.status;
  if (event.hotKeyId.value.signature != signature)
    return Statuses::eventNotHandled;
  const auto found = statics().hotKeys.find(event.hotKeyId.value.id);
  if (found == statics().hotKeys.end())
    return Statuses::eventNotHandled;
  const std::shared_ptr<HotKey> hotKey = found->second;  // outlives what its callback does
  const bool isPress = event.kind == HotKeyEventKind::HotKeyPressed;
  (isPress ? hotKey->onKeyDown : hotKey->onKeyUp)(hotKey->shortcut);
  return Statuses::noError;
}

HotKeyStatus handleRawKeyEvent(const HotKeyEvent& event) {
  for (const auto& parameter : {event.keyCode, event.modifiers})
    if (parameter.status != Statuses::noError)
      return parameter.status;
  const Shortcut shortcut(event.keyCode.value, event.modifiers.value);
  const auto& hotKeys = statics().hotKeys;
  const auto found =
      std::ranges::find_if(hotKeys, [&](const auto& entry) { return entry.second->shortcut == shortcut; });
  if (found == hotKeys.end())
    return Statuses::eventNotHandled;
  const std::shared_ptr<HotKey> hotKey = found->second;
  const bool isPress = event.kind == HotKeyEventKind::RawKeyDown;
  (isPress ? hotKey->onKeyDown : hotKey->onKeyUp)(hotKey->shortcut);
  return Statuses::noError;
}

HotKeyStatus carbonKeyboardShortcutsEventHandler(const HotKeyEvent* event) {
  if (!event)
    return Statuses::eventNotHandled;
  switch (event->kind) {
    case HotKeyEventKind::HotKeyPressed:
    case HotKeyEventKind::HotKeyReleased:
      return handleHotKeyEvent(*event);
    case HotKeyEventKind::RawKeyDown:
    case HotKeyEventKind::RawKeyUp:
      return handleRawKeyEvent(*event);
  }
  return Statuses::eventNotHandled;
}

std::optional<platform::Event> takeIfShortcut(const platform::Event& event) {
  const bool isPress = event.type == platform::EventType::KeyDown;
  if (!isPress && event.type != platform::EventType::KeyUp)
    return event;
  HotKeyEvent raw;
  raw.kind = isPress ? HotKeyEventKind::RawKeyDown : HotKeyEventKind::RawKeyUp;
  raw.keyCode = static_cast<quint32>(event.keyCode);
  raw.modifiers = static_cast<quint32>(carbon(event.modifierFlags));
  return handleRawKeyEvent(raw) == Statuses::noError ? std::nullopt : std::optional(event);
}

RunLoopLocalEventMonitor& keyEventMonitor() {
  constexpr quint64 keyEvents = (quint64{1} << static_cast<int>(platform::EventType::KeyDown)) |
                                (quint64{1} << static_cast<int>(platform::EventType::KeyUp));
  auto& monitor = statics().monitor;
  if (!monitor)
    monitor = std::make_unique<RunLoopLocalEventMonitor>(keyEvents, platform::RunLoop::Mode::EventTracking,
                                                         takeIfShortcut);
  return *monitor;
}

enum class RawKeys { Ignored, Heard };

void setRawKeys(RawKeys wanted) {
  auto& service = HotKeyService::current();
  const bool hasEventQueue = service.systemVersion().major >= 14;
  if (hasEventQueue && wanted == RawKeys::Heard)
    keyEventMonitor().start();
  else if (hasEventQueue)
    keyEventMonitor().stop();
  else if (wanted == RawKeys::Heard)
    service.addEventTypes(*statics().eventHandler, rawKeyEventTypes);
  else
    service.removeEventTypes(*statics().eventHandler, rawKeyEventTypes);
}

}  // namespace

void registerShortcut(const Shortcut& shortcut, Callback onKeyDown, Callback onKeyUp) {
  Statics& all = statics();
  const qint64 id = ++all.hotKeyId;
  const auto reference = registerWithService(shortcut, id);
  if (!reference)
    return;
  all.hotKeys.emplace(id, std::make_shared<HotKey>(
                              HotKey{shortcut, id, reference, std::move(onKeyDown), std::move(onKeyUp)}));
  if (all.eventHandler)
    return;
  const auto installed = HotKeyService::current().installEventHandler(carbonKeyboardShortcutsEventHandler);
  if (installed.status != Statuses::noError || !installed.reference)
    return;  // the next registration tries again
  all.eventHandler = installed.reference;
  updateEventHandler();
}

void unregisterShortcut(const Shortcut& shortcut) {
  std::erase_if(statics().hotKeys, [&](const auto& entry) {
    const bool isMeant = entry.second->shortcut == shortcut;
    if (isMeant)
      unregisterWithService(*entry.second);
    return isMeant;
  });
}

void updateEventHandler() {
  const auto handler = statics().eventHandler;
  if (!handler)
    return;
  auto& service = HotKeyService::current();
  if (isEnabled() && !isMenuOpen()) {
    softRegisterAll();
    setRawKeys(RawKeys::Ignored);
    service.addEventTypes(*handler, hotKeyEventTypes);
    return;
  }
  softUnregisterAll();
  service.removeEventTypes(*handler, hotKeyEventTypes);
  setRawKeys(isEnabled() ? RawKeys::Heard : RawKeys::Ignored);
}

QList<Shortcut> system() {
  const std::optional<QVariant> answer = platform::copySymbolicHotKeys();
  const QVariantList entries = answer.value_or(QVariant()).toList();
  const auto isDictionary = [](const QVariant& entry) { return entry.typeId() == QMetaType::QVariantMap; };
  if (!std::ranges::all_of(entries, isDictionary))
    return {};
  const auto isInteger = [](const QVariant& value) {
    return value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong;
  };
  QList<Shortcut> shortcuts;
  for (const QVariant& entry : entries) {
    const QVariantMap dictionary = entry.toMap();
    const QVariant isEnabled = dictionary.value(QStringLiteral("kHISymbolicHotKeyEnabled"));
    const QVariant code = dictionary.value(QStringLiteral("kHISymbolicHotKeyCode"));
    const QVariant modifiers = dictionary.value(QStringLiteral("kHISymbolicHotKeyModifiers"));
    const bool isOn = isEnabled.typeId() == QMetaType::Bool && isEnabled.toBool();
    if (isOn && isInteger(code) && isInteger(modifiers))
      shortcuts << Shortcut(code.toLongLong(), modifiers.toLongLong());
  }
  return shortcuts;
}

void resetStatics() {
  softUnregisterAll();
  if (const auto handler = statics().eventHandler) {
    HotKeyService::current().removeEventTypes(*handler, hotKeyEventTypes);
    HotKeyService::current().removeEventTypes(*handler, rawKeyEventTypes);
  }
  statics() = {};
}

}  // namespace KeyboardShortcuts::CarbonKeyboardShortcuts
