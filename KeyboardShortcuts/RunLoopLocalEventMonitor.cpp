#include "KeyboardShortcuts/RunLoopLocalEventMonitor.h"

#include "platform/input/HotKeyService.h"

#include <vector>

namespace KeyboardShortcuts {
namespace {

platform::RunLoop* currentRunLoop() {
  return platform::HotKeyService::current().currentRunLoop();
}

}  // namespace

RunLoopLocalEventMonitor::RunLoopLocalEventMonitor(quint64 eventMask, platform::RunLoop::Mode mode,
                                                   Callback eventCallback)
    : events(eventMask),
      runLoopMode(mode),
      callback(std::move(eventCallback)),
      observer(std::make_shared<const std::function<void()>>([this] { filterQueue(); })) {
}

RunLoopLocalEventMonitor::~RunLoopLocalEventMonitor() {
  stop();
}

void RunLoopLocalEventMonitor::start() {
  if (auto* const loop = currentRunLoop())
    loop->addObserver(observer, runLoopMode);
}

void RunLoopLocalEventMonitor::stop() {
  if (auto* const loop = currentRunLoop())
    loop->removeObserver(observer, runLoopMode);
}

void RunLoopLocalEventMonitor::filterQueue() const {
  auto* const loop = currentRunLoop();
  if (!loop)
    return;
  std::vector<platform::Event> drained;
  while (const auto event = loop->nextEvent(runLoopMode))
    drained.push_back(*event);
  for (const platform::Event& event : drained)
    if (const auto passed = filtered(event))
      loop->postEvent(*passed);
}

std::optional<platform::Event> RunLoopLocalEventMonitor::filtered(const platform::Event& event) const {
  const int type = static_cast<int>(event.type);
  const bool isOther = type < 64 && !((events >> type) & 1);
  return isOther ? event : callback(event);
}

}  // namespace KeyboardShortcuts
