#include "KeyboardShortcuts/EventStream.h"

#include <utility>

namespace KeyboardShortcuts {

EventStream::EventStream(std::shared_ptr<Buffer> buffer, std::function<void()> onTermination)
    : buffer(std::move(buffer)), onTermination(std::move(onTermination)) {
}

EventStream::~EventStream() {
  buffer->consumer = nullptr;
  onTermination();
}

void EventStream::forEach(Consumer consumer) {
  const auto kept = buffer;  // the consumer may end the stream
  kept->consumer = std::move(consumer);
  for (const EventType event : std::exchange(kept->waiting, {}))
    kept->yield(event);
}

void EventStream::Buffer::yield(EventType event) {
  if (only && *only != event)
    return;
  if (const Consumer running = consumer)
    running(event);
  else
    waiting.push_back(event);
}

}  // namespace KeyboardShortcuts
