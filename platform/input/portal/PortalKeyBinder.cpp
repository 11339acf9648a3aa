#include "platform/input/portal/PortalKeyBinder.h"

#include "platform/base/Log.h"
#include "platform/input/DesktopHotKeys.h"
#include "platform/input/Triggers.h"
#include "platform/portal/KdeComponents.h"

namespace platform {
namespace {

constexpr std::chrono::seconds pauseBeforeReopening{2};

}  // namespace

PortalKeyBinder::PortalKeyBinder(Portal::FrontEnd frontEnd, Listener listener)
    : frontEnd(frontEnd), listener(std::move(listener)), coming(Portal::shared()->observeComing([this] {
        if (isKnown && !shortcuts)
          open();
      })) {
}

void PortalKeyBinder::bind(const std::vector<HotKey>& hotKeys) {
  wanted = hotKeys;
  open();
}

HotKeyState PortalKeyBinder::state() const {
  if (!isKnown)
    return {HotKeyWay::Undecided, {}, {}};
  return {HotKeyWay::Portal, shortcuts ? shortcuts->triggers() : PortalShortcuts::Triggers(), {}};
}

/// A session takes its hot keys once, so other ones need another session.
void PortalKeyBinder::open() {
  shortcuts.reset();
  again.cancel();
  std::vector<PortalShortcuts::Shortcut> all;
  for (const HotKey& hotKey : wanted)
    all.push_back({hotKey.name, hotKey.text, portalTrigger(hotKey)});
  PortalShortcuts::Callbacks callbacks;
  callbacks.onActivated = [this](const QString& id) { listener.onKey(KeyAction::Press, id); };
  callbacks.onDeactivated = [this](const QString& id) { listener.onKey(KeyAction::Release, id); };
  callbacks.onTriggers = [this] { triggersChanged(); };
  callbacks.onEnd = [this](PortalShortcuts::Callbacks::End end, const QString& reason) {
    ended(end, reason);
  };
  shortcuts = std::make_unique<PortalShortcuts>(std::move(all), frontEnd, std::move(callbacks));
}

void PortalKeyBinder::triggersChanged() {
  isKnown = true;
  listener.onStateChange();
  if (runningHotKeyDesktop() != HotKeyDesktop::Kde || std::exchange(hasLookedForFormer, true))
    return;
  KdeComponents::find(context, PortalShortcuts::token,
                      [this](const QStringList& places) { moveFromFormerPlace(places); });
}

/// The desktop holds the keys that it gave when the program was started in another way, and says that it has
/// given them again, which it hasn't. Once both places are empty it does.
void PortalKeyBinder::moveFromFormerPlace(const QStringList& places) {
  if (places.size() < 2)
    return;
  log(QStringLiteral("Sorrel hot keys: the desktop has them for another way of starting; taking them over"));
  shortcuts.reset();
  again = MainQueue::main().asyncAfter(pauseBeforeReopening, [this, places] {
    KdeComponents::forgetInactive(places);
    again = MainQueue::main().asyncAfter(pauseBeforeReopening, [this] { open(); });
  });
}

void PortalKeyBinder::ended(PortalShortcuts::Callbacks::End end, const QString& reason) {
  shortcuts.reset();
  if (!isKnown) {
    listener.onUnavailable();
    return;
  }
  log(QStringLiteral("Sorrel hot keys: %1").arg(reason));
  // A front end that goes is followed by another, sooner or later; one that has only closed the session still
  // stands.
  if (end == PortalShortcuts::Callbacks::End::Ended)
    again = MainQueue::main().asyncAfter(pauseBeforeReopening, [this] { open(); });
  listener.onStateChange();
}

}  // namespace platform
