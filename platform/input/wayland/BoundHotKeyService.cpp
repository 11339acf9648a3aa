#include "platform/input/wayland/BoundHotKeyService.h"

#include "platform/base/Log.h"
#include "platform/input/KeyCodes.h"

#include <algorithm>

namespace platform {
namespace {

/// A key that is still held is told of again at the latest after this; one that isn't told of for so long has
/// been let go, even if nobody said so. Longer than the delay before the first repeat on any desktop as it
/// comes.
constexpr qint64 longestRepeatMilliseconds = 800;

bool isSame(const HotKey& a, const HotKey& b) {
  return a.name == b.name && a.keyCode == b.keyCode && a.modifiers == b.modifiers && a.text == b.text;
}

}  // namespace

BoundHotKeyService::BoundHotKeyService(std::vector<Way> allWays) : ways(std::move(allWays)) {
  bindLater();
}

BoundHotKeyService::~BoundHotKeyService() = default;

Result<HotKeyReference> BoundHotKeyService::registerHotKey(const HotKey& hotKey) {
  if (!evdevCode(hotKey.keyCode))
    return Error{QStringLiteral("there is no such key"), HotKeyStatuses::invalidHotKey};
  const bool isThere = std::ranges::any_of(registered, [&](const auto& entry) {
    return entry.second.keyCode == hotKey.keyCode && entry.second.modifiers == hotKey.modifiers;
  });
  if (isThere)
    return Error{QStringLiteral("the key is taken"), HotKeyStatuses::hotKeyExists};
  const HotKeyReference reference{++lastReference};
  registered.emplace(reference, hotKey);
  bindLater();
  return reference;
}

void BoundHotKeyService::unregisterHotKey(HotKeyReference reference) {
  if (registered.erase(reference) > 0)
    bindLater();
}

Result<> BoundHotKeyService::installEventHandler(EventHandler handler) {
  eventHandler = std::move(handler);
  listening = Keys::None;
  return {};
}

void BoundHotKeyService::listen(Keys keys) {
  listening = keys;
  bindLater();
}

std::vector<SymbolicHotKey> BoundHotKeyService::takenByOthers() const {
  return binder ? binder->takenByOthers() : std::vector<SymbolicHotKey>();
}

HotKeyState BoundHotKeyService::state() const {
  if (binder)
    return binder->state();
  return {way < ways.size() ? HotKeyWay::Undecided : HotKeyWay::Commands, {}, {}};
}

void BoundHotKeyService::tryAgain() {
  if (way < ways.size())
    return;
  way = 0;
  bound.clear();
  bindLater();
}

/// All changes of one turn of the event loop together: one shortcut in another's place is two of them.
void BoundHotKeyService::bindLater() {
  if (!binding.isPending())
    binding = MainQueue::main().asyncAfter({}, [this] { bind(); });
}

/// While a menu is open the hot keys are handed back, but stay with the desktop, which tells of them as
/// before.
void BoundHotKeyService::bind() {
  if (listening == Keys::Raw)
    return;
  std::vector<HotKey> hotKeys;
  if (listening == Keys::Grabbed)
    for (const auto& [reference, hotKey] : registered)
      hotKeys.push_back(hotKey);
  std::ranges::sort(hotKeys, {}, &HotKey::name);  // so that one that was given anew is no change
  if (!binder)
    nextWay();
  else if (std::ranges::equal(hotKeys, bound, isSame))
    return;
  bound = std::move(hotKeys);
  held.clear();
  if (binder)
    binder->bind(bound);
}

void BoundHotKeyService::nextWay() {
  if (way == ways.size())
    return;
  KeyBinder::Listener listener;
  listener.onKey = [this](KeyAction action, const QString& name) { heard(action, name); };
  listener.onStateChange = [this] { observers.tell(); };
  listener.onUnavailable = [this] {
    binder.reset();
    ++way;
    if (way == ways.size())
      log(QStringLiteral(
          "Sorrel hot keys: this desktop offers no way to watch keys; its own settings can run "
          "Sorrel's commands"));
    bindLater();
    observers.tell();
  };
  binder = ways[way](std::move(listener));
}

void BoundHotKeyService::heard(KeyAction action, const QString& name) {
  const auto found = std::ranges::find(bound, name, &HotKey::name);
  if (found == bound.end())
    return;
  const HotKey hotKey = *found;  // which the handler may have bound anew
  if (action == KeyAction::Release) {
    if (held.remove(name) > 0)
      send(action, hotKey);
    return;
  }
  const qint64 now = MainQueue::main().uptime();
  const auto before = held.constFind(name);
  const bool isRepeat = before != held.constEnd() && now - *before <= longestRepeatMilliseconds;
  held.insert(name, now);
  if (!isRepeat)
    send(action, hotKey);
}

KeyOutcome BoundHotKeyService::send(KeyAction action, const HotKey& hotKey) const {
  const EventHandler running = eventHandler;  // outlives its own replacement
  if (listening == Keys::Raw && running.onRawKey)
    return running.onRawKey({action, hotKey.keyCode, hotKey.modifiers});
  const auto wanted =
      std::ranges::find_if(registered, [&](const auto& entry) { return entry.second.name == hotKey.name; });
  if (listening == Keys::Grabbed && running.onHotKey && wanted != registered.end())
    return running.onHotKey({action, wanted->second.id});
  return KeyOutcome::Passed;
}

}  // namespace platform
