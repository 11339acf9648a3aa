#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace KeyboardShortcuts {

enum class EventType { keyDown, keyUp };

/// The presses and releases of one name's shortcut, from the stream's creation until it goes. None is lost:
/// those that nobody has taken yet wait.
class EventStream {
 public:
  using Consumer = std::function<void(EventType)>;
  struct Buffer;

  EventStream(std::shared_ptr<Buffer> buffer, std::function<void()> onTermination);
  ~EventStream();
  EventStream(const EventStream&) = delete;
  EventStream& operator=(const EventStream&) = delete;

  /// Hands over the events that wait, and each further one on the main thread as it comes.
  void forEach(Consumer consumer);

 private:
  std::shared_ptr<Buffer> buffer;
  std::function<void()> onTermination;
};

struct EventStream::Buffer {
  void yield(EventType event);

  std::optional<EventType> only;  // the type that the stream is of, if not of both
  std::deque<EventType> waiting;
  Consumer consumer;
};

}  // namespace KeyboardShortcuts
