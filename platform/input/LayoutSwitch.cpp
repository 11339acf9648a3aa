#include "platform/input/LayoutSwitch.h"

#include "platform/base/Environment.h"
#include "platform/base/Log.h"
#include "platform/input/X11LayoutSwitch.h"
#include "platform/input/wayland/WaylandLayoutSwitch.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

#include <QStringList>

#include <algorithm>

namespace platform {
namespace {

QString named(HotKeyModifiers modifiers) {
  QStringList names;
  if (modifiers.testFlag(HotKeyModifier::Control))
    names << QStringLiteral("Ctrl");
  if (modifiers.testFlag(HotKeyModifier::Option))
    names << QStringLiteral("Alt");
  if (modifiers.testFlag(HotKeyModifier::Shift))
    names << QStringLiteral("Shift");
  if (modifiers.testFlag(HotKeyModifier::Command))
    names << QStringLiteral("Super");
  return names.join(u'+');
}

/// Those that hold no other: where Alt and Shift are taken, so is everything with both.
QStringList smallest(const std::vector<HotKeyModifiers>& combinations) {
  QStringList names;
  for (const HotKeyModifiers combination : combinations) {
    const bool holdsAnother = std::ranges::any_of(combinations, [&](HotKeyModifiers other) {
      return other != combination && combination.testFlags(other);
    });
    if (!holdsAnother)
      names << named(combination);
  }
  return names;
}

}  // namespace

bool LayoutSwitch::takes(HotKeyModifiers modifiers) const {
  return std::ranges::find(taken, modifiers) != taken.end();
}

Subscription LayoutSwitch::observe(std::function<void()> block) {
  return observers.add(std::move(block));
}

void LayoutSwitch::update(std::vector<HotKeyModifiers> combinations) {
  if (combinations == taken)
    return;
  taken = std::move(combinations);
  if (!taken.empty())
    log(QStringLiteral("Sorrel hot keys: %1 changes the keyboard's layout, so hot keys with it don't arrive")
            .arg(smallest(taken).join(QStringLiteral(", "))));
  observers.tell();
}

LayoutSwitch& LayoutSwitch::current() {
  return *Environment::shared<LayoutSwitch>([] { return std::make_shared<LayoutSwitch>(); });
}

std::shared_ptr<LayoutSwitch> LayoutSwitch::forDesktop() {
  if (xcb_connection_t* const connection = x11Connection())
    return std::make_shared<X11LayoutSwitch>(connection);
  if (waylandDisplay())
    return std::make_shared<WaylandLayoutSwitch>();
  return std::make_shared<LayoutSwitch>();
}

}  // namespace platform
