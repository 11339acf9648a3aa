#pragma once

#include "platform/base/Subscription.h"
#include "platform/input/HotKeyService.h"

#include <memory>
#include <vector>

namespace platform {

/// Knows the modifiers that change the keyboard's layout when they are pressed together, where a user has it
/// set up so: Alt and Shift, say. The second of them then isn't a modifier, and so a hot key that needs both
/// never arrives. Main thread only.
class LayoutSwitch {
 public:
  virtual ~LayoutSwitch() = default;

  /// Whether no hot key with these modifiers arrives.
  [[nodiscard]] bool takes(HotKeyModifiers modifiers) const;
  /// `block` is called after the answers have changed, as they do with the keyboard's set-up.
  [[nodiscard]] Subscription observe(std::function<void()> block);

  /// All combinations that are taken from now on; one line in the log names them where they have changed.
  void update(std::vector<HotKeyModifiers> combinations);

  /// The one in use; one that takes nothing where the environment has none.
  static LayoutSwitch& current();
  /// The one of the display that the application is connected to, which follows the keyboard; its first
  /// answers come at the event loop's next turn. Needs a QGuiApplication, which must outlive it.
  static std::shared_ptr<LayoutSwitch> forDesktop();

 private:
  std::vector<HotKeyModifiers> taken;
  Listeners<> observers;
};

}  // namespace platform
