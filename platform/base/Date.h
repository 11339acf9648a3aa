#pragma once

#include <chrono>

namespace platform {

/// A moment of the wall clock, as exact as file systems keep it.
using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

/// Earlier than every date that occurs: what stands for a date that can't be known.
inline constexpr Date distantPast = Date::min();

}  // namespace platform
