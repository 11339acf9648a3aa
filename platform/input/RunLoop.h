#pragma once

#include "platform/base/Event.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// The loop in which a thread waits for events, and its queue of them, for a module that must see events
/// before whoever reads them in the same mode.
class RunLoop {
 public:
  enum class Mode { EventTracking };
  /// Called at each pass of the loop, before the loop's sources. It is known by its address.
  using Observer = std::shared_ptr<const std::function<void()>>;

  virtual ~RunLoop() = default;

  virtual void addObserver(const Observer& observer, Mode mode) = 0;
  virtual void removeObserver(const Observer& observer, Mode mode) = 0;
  /// Takes the oldest event of any type off the queue; nullopt if none waits. Doesn't wait for one.
  virtual std::optional<Event> nextEvent(Mode mode) = 0;
  /// Puts an event at the end of the queue.
  virtual void postEvent(const Event& event) = 0;
};

}  // namespace platform
