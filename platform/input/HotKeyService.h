#pragma once

#include "platform/base/Result.h"
#include "platform/base/Subscription.h"
#include "platform/input/HotKeyState.h"
#include "platform/input/SymbolicHotKeys.h"

#include <QFlags>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Why the hot-key service refuses; the number of its errors.
namespace HotKeyStatuses {
/// The keys are taken, by another program or by an earlier registration of this one.
inline constexpr int hotKeyExists = -9878;
/// There is no such key or modifier, or no service that could watch it.
inline constexpr int invalidHotKey = -9879;
}  // namespace HotKeyStatuses

/// Modifiers in the encoding of the hot-key service (an event's flags have another, see
/// platform/base/Event.h).
enum class HotKeyModifier : quint32 {
  Command = 0x100,
  Shift = 0x200,
  Option = 0x800,
  Control = 0x1000,
  Function = 0x20000,
};
Q_DECLARE_FLAGS(HotKeyModifiers, HotKeyModifier)
Q_DECLARE_OPERATORS_FOR_FLAGS(HotKeyModifiers)

/// Names one hot key in the events that it causes. The signature tells the program's parts apart.
struct HotKeyId {
  quint32 signature = 0;
  quint32 id = 0;
  bool operator==(const HotKeyId&) const = default;
};

/// A hot key to watch: a virtual key code and HotKeyModifiers, all of which must be down, and no other.
struct HotKey {
  quint32 keyCode = 0;
  quint32 modifiers = 0;
  HotKeyId id;
  /// What it is for: a name that stays the same from start to start, and a text in the user's language. For
  /// desktops on which the user himself gives a program its keys.
  QString name;
  QString text;
  /// The option of the command line by which the program does the same ("--capture"); empty if there is none.
  QString option;
};

enum class KeyAction { Press, Release };

/// A hot key's press or release, wherever the keyboard is.
struct HotKeyEvent {
  KeyAction action = KeyAction::Press;
  HotKeyId id;
};
/// A key's press or release on its way to an open menu of this program.
struct RawKeyEvent {
  KeyAction action = KeyAction::Press;
  quint32 keyCode = 0;    // virtual
  quint32 modifiers = 0;  // HotKeyModifiers
};
/// Whether an event has been dealt with, or goes on to whom it was meant for.
enum class KeyOutcome { Taken, Passed };

enum class HotKeyReference : quint64 {};

/// The desktop's service for hot keys that work whichever program has the keyboard. Main thread only.
///
/// It reports events to one handler, and of those only the kind that it was told to listen to. A held key is
/// one press and one release, however often it repeats. Before a press of a hot key is reported the keyboard
/// is free again, so that a program started by the handler can take it at once.
class HotKeyService {
 public:
  /// The registered hot keys, which the service grabs from all other programs; or, while a menu of this
  /// program has the keyboard and no hot key can come through, all keys that are about to reach it.
  enum class Keys { None, Grabbed, Raw };
  struct EventHandler {
    std::function<KeyOutcome(const HotKeyEvent&)> onHotKey;
    std::function<KeyOutcome(const RawKeyEvent&)> onRawKey;
  };

  virtual ~HotKeyService() = default;

  /// The number of an error is one of HotKeyStatuses.
  virtual Result<HotKeyReference> registerHotKey(const HotKey& hotKey) = 0;
  virtual void unregisterHotKey(HotKeyReference reference) = 0;
  /// A second handler takes the place of the first. It hears nothing until listen() is called.
  virtual Result<> installEventHandler(EventHandler handler) = 0;
  virtual void listen(Keys keys) = 0;

  /// The hot keys that other programs have by now, where the desktop lets a program ask for them.
  [[nodiscard]] virtual std::vector<SymbolicHotKey> takenByOthers() const { return {}; }

  /// How the hot keys come, where that isn't for this program alone to decide; `block` is called after it has
  /// changed.
  [[nodiscard]] virtual HotKeyState state() const { return {}; }
  [[nodiscard]] virtual Subscription observeState(const std::function<void()>& /*block*/) { return {}; }

  /// The service in use; where the environment has none, one that refuses every registration.
  static HotKeyService& current();
  /// The service of the display that the application is connected to, or the refusing one, with a line in the
  /// log, where there is none. Needs a QGuiApplication, which must outlive the service.
  static std::shared_ptr<HotKeyService> forDesktop();
};

}  // namespace platform
