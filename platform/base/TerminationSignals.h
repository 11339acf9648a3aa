#pragma once

#include <functional>

namespace platform {

/// Has `handler` called on the main thread, from the event loop, when the system asks the program to end
/// (SIGTERM, SIGINT, SIGHUP). To be called once.
void handleTerminationSignals(std::function<void()> handler);

}  // namespace platform
