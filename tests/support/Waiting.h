#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace testing_support {

/// Runs the event loop until `holds` is true, and looks again every few milliseconds. Throws
/// std::runtime_error, which fails the test, with `what` in its text when that hasn't come to be in `limit`.
/// So a success depends on what is seen and never on how long something takes.
void until(const std::string& what, const std::function<bool()>& holds,
           std::chrono::milliseconds limit = std::chrono::seconds(20));

}  // namespace testing_support
