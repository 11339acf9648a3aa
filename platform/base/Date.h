#pragma once

#include <chrono>
#include <cstdint>

namespace platform {

/// A moment of the wall clock, as exact as file systems keep it.
using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

/// Earlier than every date that occurs: what stands for a date that can't be known.
inline constexpr Date distantPast = Date::min();

/// Of a moment that file systems count in more seconds than a Date can hold, the Date nearest to it: those
/// reach from 1677 to 2262.
[[nodiscard]] constexpr Date dateOf(std::int64_t seconds, std::uint32_t nanoseconds) {
  constexpr auto count = [](Date date) {
    return std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
  };
  if (seconds <= count(Date::min()))
    return Date::min();
  if (seconds >= count(Date::max()))
    return Date::max();
  return Date(std::chrono::seconds(seconds) + std::chrono::nanoseconds(nanoseconds));
}

}  // namespace platform
