#pragma once

#include <QFlags>

#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace platform {

class RunLoop;

/// The outcome of a call to the hot-key service; 0 is success.
using HotKeyStatus = qint32;
namespace HotKeyStatuses {
inline constexpr HotKeyStatus noError = 0;
inline constexpr HotKeyStatus parameterNotFound = -9870;
inline constexpr HotKeyStatus eventNotHandled = -9874;
/// The keys are taken, by another program or by an earlier registration of this one.
inline constexpr HotKeyStatus hotKeyExists = -9878;
/// There is no such key or modifier, or no service that could watch it.
inline constexpr HotKeyStatus invalidHotKey = -9879;
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

enum class HotKeyEventKind : quint32 { RawKeyDown = 1, RawKeyUp = 3, HotKeyPressed = 5, HotKeyReleased = 6 };

struct EventTypeSpec {
  quint32 eventClass = 0;
  HotKeyEventKind kind = HotKeyEventKind::HotKeyPressed;
  bool operator==(const EventTypeSpec&) const = default;
};
/// The class of all events here, the characters "keyb".
inline constexpr quint32 keyboardEventClass = 0x6B657962;

/// A hot key's press or release, or a key's while raw keys are wanted. A parameter that the event doesn't
/// carry has a status other than 0 and no meaningful value.
struct HotKeyEvent {
  template <class Value>
  struct Parameter {
    HotKeyStatus status = HotKeyStatuses::parameterNotFound;
    Value value{};
    Parameter() = default;
    Parameter(Value present) : status(HotKeyStatuses::noError), value(present) {}
  };

  HotKeyEventKind kind = HotKeyEventKind::HotKeyPressed;
  Parameter<HotKeyId> hotKeyId;  // '----'
  Parameter<quint32> keyCode;    // 'kcod', a virtual key code
  Parameter<quint32> modifiers;  // 'kmod', HotKeyModifiers
};

enum class HotKeyReference : quint64 {};
enum class EventHandlerReference : quint64 {};

struct SystemVersion {
  int major = 0;
  int minor = 0;
};

/// The desktop's service for hot keys that work whichever program has the keyboard. Main thread only.
///
/// It reports events to one handler, and of those only the types that the handler was given: the hot keys'
/// own, or, while a menu of this program has the keyboard, the raw key events that are about to reach it. A
/// held key is one press and one release, however often it repeats. Before a press of a hot key is reported
/// the keyboard is free again, so that a program started by the handler can take it at once.
class HotKeyService {
 public:
  struct Registration {
    HotKeyStatus status = HotKeyStatuses::invalidHotKey;
    std::optional<HotKeyReference> reference;
  };
  struct Installation {
    HotKeyStatus status = HotKeyStatuses::invalidHotKey;
    std::optional<EventHandlerReference> reference;
  };
  /// Gives 0 if it has dealt with the event, else eventNotHandled or another status, and the event goes on.
  using EventHandler = std::function<HotKeyStatus(const HotKeyEvent*)>;

  virtual ~HotKeyService() = default;

  /// `keyCode` is a virtual key code, `modifiers` are HotKeyModifiers; all of them must be down, and no
  /// other.
  virtual Registration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id) = 0;
  virtual void unregisterHotKey(HotKeyReference reference) = 0;
  /// A second handler takes the place of the first. It hears nothing until event types are added.
  virtual Installation installEventHandler(EventHandler handler) = 0;
  virtual void addEventTypes(EventHandlerReference handler, std::span<const EventTypeSpec> types) = 0;
  virtual void removeEventTypes(EventHandlerReference handler, std::span<const EventTypeSpec> types) = 0;

  /// Tells which of the two ways of hearing keys under an open menu works here: from 14.0 on the queue of the
  /// current run loop, before that the raw key event types.
  [[nodiscard]] virtual SystemVersion systemVersion() const = 0;
  /// nullptr where systemVersion() is below 14.0.
  [[nodiscard]] virtual RunLoop* currentRunLoop() { return nullptr; }

  /// The service in use. Until one is set it is one that refuses every registration.
  static HotKeyService& current();
  /// nullptr brings the refusing one back.
  static void setCurrent(std::shared_ptr<HotKeyService> service);
  /// The service of the display that the application is connected to, or the refusing one, with a line in the
  /// log, where there is none. Needs a QGuiApplication, which must outlive the service.
  static std::shared_ptr<HotKeyService> forDesktop();
};

}  // namespace platform
