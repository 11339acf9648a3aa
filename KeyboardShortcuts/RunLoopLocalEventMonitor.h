#pragma once

#include "platform/input/RunLoop.h"

namespace KeyboardShortcuts {

/// Sees the events that wait for a run loop in one mode before whoever reads them there, and may take some
/// away. The others keep their order.
class RunLoopLocalEventMonitor {
 public:
  /// Gives the event back to let it pass.
  using Callback = std::function<std::optional<platform::Event>(const platform::Event&)>;

  /// `events` has the bit of each event type that the callback is asked about.
  RunLoopLocalEventMonitor(quint64 events, platform::RunLoop::Mode runLoopMode, Callback callback);
  ~RunLoopLocalEventMonitor();
  RunLoopLocalEventMonitor(const RunLoopLocalEventMonitor&) = delete;
  RunLoopLocalEventMonitor& operator=(const RunLoopLocalEventMonitor&) = delete;

  /// On the run loop that is current at the call; a platform without one hears nothing.
  void start();
  void stop();

 private:
  void filterQueue() const;
  [[nodiscard]] std::optional<platform::Event> filtered(const platform::Event& event) const;

  const quint64 events;
  const platform::RunLoop::Mode runLoopMode;
  const Callback callback;
  const platform::RunLoop::Observer observer;
};

}  // namespace KeyboardShortcuts
