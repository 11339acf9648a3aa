#pragma once

namespace platform {

enum class Cores { One, All };
enum class Instructions { Plain, Widest };

/// How much of the machine a filter or an encoder may use. What comes of it is the same whatever it uses:
/// less than everything is for measuring and for tests.
struct Effort {
  Cores cores = Cores::All;
  Instructions instructions = Instructions::Widest;
};

}  // namespace platform
