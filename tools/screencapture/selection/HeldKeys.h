#pragma once

#include <array>
#include <bitset>
#include <cstdint>

namespace screencapture {

/// Tells a key that goes down from one that is held, and from one that was down before we took the keyboard:
/// the keys of the hot key that started the program are still held then, and repeat.
class HeldKeys {
 public:
  /// The keys that are down, as the X server lists them: bit `code % 8` of byte `code / 8`.
  void startWith(const std::uint8_t (&keys)[32]) {
    ours.reset();
    for (std::size_t code = 0; code < down.size(); ++code)
      down[code] = keys[code / 8] & (1 << (code % 8));
  }

  /// Whether the key goes down with this event; false for the repeats of a held key.
  [[nodiscard]] bool press(std::uint8_t code) {
    if (down[code])
      return false;
    down.set(code);
    ours.set(code);
    return true;
  }

  /// Whether the key is down and went down before our eyes.
  [[nodiscard]] bool isHeld(std::uint8_t code) const { return ours[code]; }

  /// Whether the key that comes up had gone down before our eyes.
  [[nodiscard]] bool release(std::uint8_t code) {
    const bool counted = ours[code];
    down.reset(code);
    ours.reset(code);
    return counted;
  }

 private:
  std::bitset<256> down;
  std::bitset<256> ours;
};

}  // namespace screencapture
