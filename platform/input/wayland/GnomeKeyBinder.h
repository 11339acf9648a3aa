#pragma once

#include "platform/base/Task.h"
#include "platform/input/wayland/KeyBinder.h"

namespace platform {

/// Hot keys among GNOME's custom ones, once the user has agreed to that (hotKeysMayBeBound). Each runs this
/// program with an option, whether it runs already or not, so no key is ever heard here; and they stay when
/// the program ends.
class GnomeKeyBinder : public KeyBinder {
 public:
  explicit GnomeKeyBinder(Listener listener);

  void bind(const std::vector<HotKey>& hotKeys) override;
  HotKeyState state() const override;

 private:
  void update();
  void consentChanged();
  void write(const QStringList& entries);

  const Listener listener;
  std::vector<HotKey> wanted;
  bool isKnown = false;             // the desktop has custom keys
  bool isBound = false;             // it was given `wanted` once
  std::optional<QStringList> next;  // to be written when what is being written is
  OwnedTask running;
  WorkItem givingUp;
  const Subscription consent;
};

}  // namespace platform
