#include "platform/input/wayland/GnomeKeyBinder.h"

#include "platform/base/Locations.h"
#include "platform/base/Log.h"
#include "platform/input/OwnCommand.h"
#include "platform/input/Triggers.h"

namespace platform {
namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::milliseconds patience = std::chrono::seconds(10);

/// What reads and writes the desktop's settings is a tool of ours; inside this program it would stay with a
/// thread and a connection of its own.
Result<OwnedTask> askTool(const QString& what, const QStringList& arguments,
                          std::function<void(const TaskAnswer&)> onAnswer) {
  return ask({Locations::ownTool(u"accelerators"_s), QStringList{what} + arguments}, std::move(onAnswer));
}

}  // namespace

GnomeKeyBinder::GnomeKeyBinder(Listener heardBy)
    : listener(std::move(heardBy)),
      consent(UserDefaults::standard().observe(hotKeysMayBeBound, [this] { consentChanged(); })) {
  const auto giveUpAfter = [this](std::chrono::milliseconds delay) {
    givingUp = MainQueue::main().asyncAfter(delay, [this] { listener.onUnavailable(); });
  };
  auto asked = askTool(u"gnome-can-add"_s, {}, [this, giveUpAfter](const TaskAnswer& answer) {
    isKnown = answer.isGood;
    running.reset();
    if (!isKnown) {
      giveUpAfter({});
      return;
    }
    givingUp.cancel();
    if (!UserDefaults::standard().value(hotKeysMayBeBound))
      log(u"Sorrel hot keys: GNOME can take them among its custom keys, which the settings ask about"_s);
    update();
    listener.onStateChange();
  });
  giveUpAfter(asked ? patience : std::chrono::milliseconds());
  if (asked)
    running = std::move(*asked);
}

void GnomeKeyBinder::bind(const std::vector<HotKey>& hotKeys) {
  wanted = hotKeys;
  update();
}

HotKeyState GnomeKeyBinder::state() const {
  return {isKnown ? HotKeyWay::Gnome : HotKeyWay::Undecided, {}, {}};
}

/// Without the user's consent nothing is touched, also not what stands there from another time.
void GnomeKeyBinder::update() {
  if (!isKnown || !UserDefaults::standard().value(hotKeysMayBeBound))
    return;
  QStringList entries;
  for (const HotKey& hotKey : wanted)
    if (const QString keys = gnomeAccelerator(hotKey); !keys.isEmpty() && !hotKey.option.isEmpty())
      entries << hotKey.name << u"Sorrel: "_s + hotKey.text << ownCommand(hotKey.option) << keys;
  isBound = true;
  write(entries);
}

/// Where he takes it back, all that is ours goes.
void GnomeKeyBinder::consentChanged() {
  if (UserDefaults::standard().value(hotKeysMayBeBound))
    update();
  else if (std::exchange(isBound, false))
    write({});
  listener.onStateChange();
}

void GnomeKeyBinder::write(const QStringList& entries) {
  if (running) {
    next = entries;
    return;
  }
  auto started = askTool(u"gnome-set"_s, entries, [this](const TaskAnswer& answer) {
    if (!answer.isGood)
      log(u"Sorrel hot keys: GNOME's custom keys can't be changed"_s);
    running.reset();
    if (const auto following = std::exchange(next, std::nullopt))
      write(*following);
  });
  if (started)
    running = std::move(*started);
  else
    log(u"Sorrel hot keys: "_s + started.error().reason);
}

}  // namespace platform
