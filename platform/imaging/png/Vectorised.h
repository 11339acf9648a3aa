#pragma once

#include "platform/imaging/png/Effort.h"

namespace platform {

#if defined(__x86_64__)
/// `loop`, compiled once more for processors that have AVX2. Fused multiply-adds stay out on purpose: they
/// round differently from what other processors do.
template <auto loop, typename... Arguments>
[[gnu::target("avx2"), gnu::flatten, gnu::noinline]] void withWideVectors(Arguments... arguments) {
  loop(arguments...);
}
#endif

template <auto loop, typename... Arguments>
[[gnu::flatten, gnu::noinline]] void withPlainVectors(Arguments... arguments) {
  loop(arguments...);
}

/// Calls a function whose loops the compiler turns into vector instructions, with the widest that this
/// processor has. Arguments go by value: what a byte written by the loop might change would keep the loop
/// from being turned.
template <auto loop, typename... Arguments>
void vectorised([[maybe_unused]] Instructions instructions, Arguments... arguments) {
#if defined(__x86_64__)
  if (instructions == Instructions::Widest && __builtin_cpu_supports("avx2"))
    return withWideVectors<loop>(arguments...);
#endif
  withPlainVectors<loop>(arguments...);
}

}  // namespace platform
