#pragma once

#include "platform/base/Result.h"
#include "platform/system/Descriptor.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// A connection to sway by its own socket, in the protocol that it has from i3 (man 7 sway-ipc): a head of
/// "i3-ipc", the length and the type, both in the machine's order of bytes, then so many bytes of JSON. Main
/// thread only.
class SwayIpc {
 public:
  enum class Type : quint32 {
    RunCommand = 0,
    Subscribe = 2,
    GetVersion = 7,
    GetConfig = 9,
    WorkspaceEvent = 0x80000000,
    BindingEvent = 0x80000005,
  };
  struct Message {
    Type type;
    QByteArray text;
  };

  /// Connects at once, or says why not.
  static Result<std::unique_ptr<SwayIpc>> connect(const QByteArray& path);

  /// `onMessage` hears of answers, in the order of the questions, and of events; `onEnd` of the end of the
  /// connection, once and last. Either may end this object.
  void listen(std::function<void(const Message&)> onMessage, std::function<void()> onEnd);

  void send(Type type, const QByteArray& text = {});
  /// Waits until as many answers have come as there are open questions, whatever they are.
  void finish(std::chrono::milliseconds patience);

 private:
  explicit SwayIpc(Descriptor connected);
  void readable();
  /// False at the connection's end, and where what comes isn't of the protocol.
  [[nodiscard]] bool fill();
  [[nodiscard]] std::optional<Message> take();
  [[nodiscard]] bool isInOrder() const;

  Descriptor socket;
  QSocketNotifier notifier;
  QByteArray received;
  int open = 0;  // questions
  std::function<void(const Message&)> onMessage;
  std::function<void()> onEnd;
  std::shared_ptr<const bool> living = std::make_shared<const bool>(true);
};

}  // namespace platform
