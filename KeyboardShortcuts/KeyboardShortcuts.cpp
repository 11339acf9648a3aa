#include "KeyboardShortcuts/KeyboardShortcuts.h"

#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "platform/base/Environment.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Menu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/UserDefaults.h"

#include <QSet>
#include <QUuid>

#include <map>

namespace KeyboardShortcuts {
namespace {

using platform::NotificationCenter;
using platform::UserDefaults;
using LegacyHandlers = std::map<Name, platform::Listeners<>>;
using StreamHandlers = std::map<Name, std::map<QUuid, Action>>;

constexpr QLatin1String storePrefix("KeyboardShortcuts_");

struct Statics {
  QSet<Shortcut> registeredShortcuts;  // whether or not the system took them
  LegacyHandlers legacyKeyDownHandlers;
  LegacyHandlers legacyKeyUpHandlers;
  StreamHandlers streamKeyDownHandlers;
  StreamHandlers streamKeyUpHandlers;
  bool isEnabled = true;
  bool isMenuOpen = false;
  bool isPaused = false;
  bool isInitialized = false;
  platform::Subscription openMenuObserver;
  platform::Subscription closeMenuObserver;
};

Statics& statics() {
  return *platform::Environment::shared<Statics>([] { return std::make_shared<Statics>(); });
}

void postChange(const Name& name) {
  NotificationCenter::defaultCenter().post(QString::fromLatin1(shortcutByNameDidChangeNotification), {},
                                           {{QStringLiteral("name"), QVariant::fromValue(name)}});
}

/// Takes the tables as copies, because an action may change them.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void runActions(const Shortcut& shortcut, LegacyHandlers legacy, StreamHandlers streams) {
  for (const auto& [name, actions] : legacy)
    if (getShortcut(name) == shortcut)
      actions.tell();
  for (const auto& [name, actions] : streams)
    if (getShortcut(name) == shortcut)
      for (const auto& [id, action] : actions)
        action();
}

void handleOnKeyDown(const Shortcut& shortcut) {
  if (!statics().isPaused)
    runActions(shortcut, statics().legacyKeyDownHandlers, statics().streamKeyDownHandlers);
}

void handleOnKeyUp(const Shortcut& shortcut) {
  if (!statics().isPaused)
    runActions(shortcut, statics().legacyKeyUpHandlers, statics().streamKeyUpHandlers);
}

void registerShortcut(const Shortcut& shortcut, const Name& name) {
  if (statics().registeredShortcuts.contains(shortcut))
    return;
  CarbonKeyboardShortcuts::registerShortcut(shortcut, name, handleOnKeyDown, handleOnKeyUp);
  statics().registeredShortcuts.insert(shortcut);
}

void registerShortcut(const Name& name) {
  if (const auto shortcut = getShortcut(name))
    registerShortcut(*shortcut, name);
}

void unregisterShortcut(const Shortcut& shortcut) {
  CarbonKeyboardShortcuts::unregisterShortcut(shortcut);
  statics().registeredShortcuts.remove(shortcut);
}

template <class Handlers>
QSet<Shortcut> shortcutsFor(const Handlers& keyDownHandlers, const Handlers& keyUpHandlers) {
  QSet<Shortcut> shortcuts;
  for (const Handlers& handlers : {keyDownHandlers, keyUpHandlers})
    for (const auto& [name, actions] : handlers)
      if (const auto shortcut = getShortcut(name))
        shortcuts.insert(*shortcut);
  return shortcuts;
}

QSet<Shortcut> shortcutsForLegacyHandlers() {
  return shortcutsFor(statics().legacyKeyDownHandlers, statics().legacyKeyUpHandlers);
}

QSet<Shortcut> shortcutsForStreamHandlers() {
  return shortcutsFor(statics().streamKeyDownHandlers, statics().streamKeyUpHandlers);
}

void updateEventHandler() {
  using Keys = platform::HotKeyService::Keys;
  const Keys underMenu = statics().isMenuOpen ? Keys::Raw : Keys::Grabbed;
  CarbonKeyboardShortcuts::updateEventHandler(statics().isEnabled ? underMenu : Keys::None);
}

void setIsMenuOpen(bool value) {
  if (std::exchange(statics().isMenuOpen, value) != value)
    updateEventHandler();
}

std::vector<Name> allNames() {
  initialize();
  std::vector<Name> names;
  for (const QString& key : UserDefaults::standard().keys())
    if (key.startsWith(storePrefix))
      names.emplace_back(key.mid(storePrefix.size()));
  return names;
}

void startStream(const Name& name, const QUuid& id, const std::shared_ptr<EventStream::Buffer>& buffer) {
  statics().streamKeyDownHandlers[name][id] = [buffer] { buffer->yield(EventType::keyDown); };
  statics().streamKeyUpHandlers[name][id] = [buffer] { buffer->yield(EventType::keyUp); };
  registerShortcut(name);
}

void endStream(const Name& name, const QUuid& id) {
  for (StreamHandlers* const handlers : {&statics().streamKeyDownHandlers, &statics().streamKeyUpHandlers}) {
    auto& ofName = (*handlers)[name];
    ofName.erase(id);
    if (ofName.empty())
      handlers->erase(name);
  }
  const auto shortcut = getShortcut(name);
  if (shortcut && !shortcutsForLegacyHandlers().unite(shortcutsForStreamHandlers()).contains(*shortcut))
    unregisterShortcut(*shortcut);
}

std::unique_ptr<EventStream> makeStream(const Name& name, std::optional<EventType> only) {
  auto& queue = platform::MainQueue::main();
  const auto buffer = std::make_shared<EventStream::Buffer>(EventStream::Buffer{only, {}, {}});
  const QUuid id = QUuid::createUuid();
  queue.async([name, id, buffer] { startStream(name, id, buffer); });
  return std::make_unique<EventStream>(
      buffer, [name, id, &queue] { queue.async([name, id] { endStream(name, id); }); });
}

}  // namespace

QString storeKey(const Name& name) {
  return storePrefix + name.rawValue();
}

bool isEnabled() {
  return statics().isEnabled;
}

void setIsEnabled(bool value) {
  if (std::exchange(statics().isEnabled, value) != value)
    updateEventHandler();
}

bool isPaused() {
  return statics().isPaused;
}

void setIsPaused(bool value) {
  statics().isPaused = value;
}

bool isMenuOpen() {
  return statics().isMenuOpen;
}

std::optional<Shortcut> getShortcut(const Name& name) {
  const auto text = UserDefaults::standard().string(storeKey(name));
  return text ? Shortcut::decode(*text) : std::nullopt;
}

void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name) {
  if (shortcut) {
    userDefaultsSet(name, *shortcut);
    return;
  }
  const auto old = getShortcut(name);
  if (!old)
    return;
  if (name.defaultShortcut())
    UserDefaults::standard().set(storeKey(name), false);
  else
    UserDefaults::standard().remove(storeKey(name));
  unregisterShortcut(*old);
  postChange(name);
}

void reset(const std::vector<Name>& names) {
  for (const Name& name : names)
    setShortcut(name.defaultShortcut(), name);
}

void resetAll() {
  reset(allNames());
}

platform::Subscription onKeyDown(const Name& name, Action action) {
  registerShortcut(name);
  return statics().legacyKeyDownHandlers[name].add(std::move(action));
}

platform::Subscription onKeyUp(const Name& name, Action action) {
  registerShortcut(name);
  return statics().legacyKeyUpHandlers[name].add(std::move(action));
}

void removeHandler(const Name& name) {
  statics().legacyKeyDownHandlers.erase(name);
  statics().legacyKeyUpHandlers.erase(name);
  const auto shortcut = getShortcut(name);
  if (shortcut && !shortcutsForStreamHandlers().contains(*shortcut))
    unregisterShortcut(*shortcut);
}

void removeAllHandlers() {
  const QSet<Shortcut> unused = shortcutsForLegacyHandlers().subtract(shortcutsForStreamHandlers());
  for (const Shortcut& shortcut : unused)
    unregisterShortcut(shortcut);
  statics().legacyKeyDownHandlers.clear();
  statics().legacyKeyUpHandlers.clear();
}

void enable(const std::vector<Name>& names) {
  for (const Name& name : names)
    registerShortcut(name);
}

void disable(const std::vector<Name>& names) {
  for (const Name& name : names)
    if (const auto shortcut = getShortcut(name))
      unregisterShortcut(*shortcut);
}

bool isEnabled(const Name& name) {
  const auto shortcut = getShortcut(name);
  return isEnabled() && shortcut && statics().registeredShortcuts.contains(*shortcut);
}

std::unique_ptr<EventStream> events(const Name& name) {
  return makeStream(name, std::nullopt);
}

std::unique_ptr<EventStream> events(EventType type, const Name& name) {
  return makeStream(name, type);
}

void userDefaultsSet(const Name& name, const Shortcut& shortcut) {
  if (const auto old = getShortcut(name))
    unregisterShortcut(*old);
  registerShortcut(shortcut, name);
  UserDefaults::standard().set(storeKey(name), shortcut.encoded());
  postChange(name);
}

bool userDefaultsContains(const Name& name) {
  return UserDefaults::standard().contains(storeKey(name));
}

void initialize() {
  if (std::exchange(statics().isInitialized, true))
    return;
  const auto observe = [](const char* name, bool isOpen) {
    return NotificationCenter::defaultCenter().addObserver(
        QString::fromLatin1(name), NotificationCenter::Queue::PostingThread,
        [isOpen](const platform::Notification&) { setIsMenuOpen(isOpen); });
  };
  statics().openMenuObserver = observe(platform::menuDidBeginTrackingNotification, true);
  statics().closeMenuObserver = observe(platform::menuDidEndTrackingNotification, false);
}

}  // namespace KeyboardShortcuts
