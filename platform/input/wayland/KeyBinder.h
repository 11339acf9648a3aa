#pragma once

#include "platform/input/HotKeyService.h"
#include "platform/input/HotKeyState.h"

namespace platform {

/// One way in which a desktop gives this program hot keys. Nothing in it waits for the desktop. Main thread
/// only.
class KeyBinder {
 public:
  /// None of these is called before the call that leads to it has returned.
  struct Listener {
    /// By the hot key's name. A held key may be pressed several times.
    std::function<void(KeyAction action, const QString& name)> onKey;
    std::function<void()> onStateChange;
    /// This desktop hasn't this way. Called once, last; the binder may go meanwhile.
    std::function<void()> onUnavailable;
  };

  virtual ~KeyBinder() = default;

  /// These are all hot keys from now on.
  virtual void bind(const std::vector<HotKey>& hotKeys) = 0;
  [[nodiscard]] virtual HotKeyState state() const = 0;
  /// The hot keys that the desktop keeps for something else, as far as this way tells.
  [[nodiscard]] virtual std::vector<SymbolicHotKey> takenByOthers() const { return {}; }
};

}  // namespace platform
