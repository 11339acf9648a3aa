#pragma once

#include <QtGlobal>

#include <optional>

/// Every key that has a name: KEY(name, virtual key code, evdev code). A virtual key code is a position on
/// the keyboard, whatever the layout prints there; the evdev code is the kernel's number for the same
/// position (linux/input-event-codes.h). Where the two keyboards differ, the position decides: `help` sits
/// where a PC keyboard has Insert, `keypadClear` where it has NumLock. `function` has an evdev code that X11
/// can't carry.
#define PLATFORM_NAMED_KEYS(KEY) \
  KEY(a, 0, 30)                  \
  KEY(b, 11, 48)                 \
  KEY(c, 8, 46)                  \
  KEY(d, 2, 32)                  \
  KEY(e, 14, 18)                 \
  KEY(f, 3, 33)                  \
  KEY(g, 5, 34)                  \
  KEY(h, 4, 35)                  \
  KEY(i, 34, 23)                 \
  KEY(j, 38, 36)                 \
  KEY(k, 40, 37)                 \
  KEY(l, 37, 38)                 \
  KEY(m, 46, 50)                 \
  KEY(n, 45, 49)                 \
  KEY(o, 31, 24)                 \
  KEY(p, 35, 25)                 \
  KEY(q, 12, 16)                 \
  KEY(r, 15, 19)                 \
  KEY(s, 1, 31)                  \
  KEY(t, 17, 20)                 \
  KEY(u, 32, 22)                 \
  KEY(v, 9, 47)                  \
  KEY(w, 13, 17)                 \
  KEY(x, 7, 45)                  \
  KEY(y, 16, 21)                 \
  KEY(z, 6, 44)                  \
  KEY(zero, 29, 11)              \
  KEY(one, 18, 2)                \
  KEY(two, 19, 3)                \
  KEY(three, 20, 4)              \
  KEY(four, 21, 5)               \
  KEY(five, 23, 6)               \
  KEY(six, 22, 7)                \
  KEY(seven, 26, 8)              \
  KEY(eight, 28, 9)              \
  KEY(nine, 25, 10)              \
  KEY(capsLock, 57, 58)          \
  KEY(shift, 56, 42)             \
  KEY(function, 63, 464)         \
  KEY(control, 59, 29)           \
  KEY(option, 58, 56)            \
  KEY(command, 55, 125)          \
  KEY(rightCommand, 54, 126)     \
  KEY(rightOption, 61, 100)      \
  KEY(rightControl, 62, 97)      \
  KEY(rightShift, 60, 54)        \
  KEY(return_, 36, 28)           \
  KEY(backslash, 42, 43)         \
  KEY(backtick, 50, 41)          \
  KEY(comma, 43, 51)             \
  KEY(equal, 24, 13)             \
  KEY(minus, 27, 12)             \
  KEY(period, 47, 52)            \
  KEY(quote, 39, 40)             \
  KEY(semicolon, 41, 39)         \
  KEY(slash, 44, 53)             \
  KEY(space, 49, 57)             \
  KEY(tab, 48, 15)               \
  KEY(leftBracket, 33, 26)       \
  KEY(rightBracket, 30, 27)      \
  KEY(pageUp, 116, 104)          \
  KEY(pageDown, 121, 109)        \
  KEY(home, 115, 102)            \
  KEY(end, 119, 107)             \
  KEY(upArrow, 126, 103)         \
  KEY(rightArrow, 124, 106)      \
  KEY(downArrow, 125, 108)       \
  KEY(leftArrow, 123, 105)       \
  KEY(escape, 53, 1)             \
  KEY(delete_, 51, 14)           \
  KEY(deleteForward, 117, 111)   \
  KEY(help, 114, 110)            \
  KEY(mute, 74, 113)             \
  KEY(volumeUp, 72, 115)         \
  KEY(volumeDown, 73, 114)       \
  KEY(f1, 122, 59)               \
  KEY(f2, 120, 60)               \
  KEY(f3, 99, 61)                \
  KEY(f4, 118, 62)               \
  KEY(f5, 96, 63)                \
  KEY(f6, 97, 64)                \
  KEY(f7, 98, 65)                \
  KEY(f8, 100, 66)               \
  KEY(f9, 101, 67)               \
  KEY(f10, 109, 68)              \
  KEY(f11, 103, 87)              \
  KEY(f12, 111, 88)              \
  KEY(f13, 105, 183)             \
  KEY(f14, 107, 184)             \
  KEY(f15, 113, 185)             \
  KEY(f16, 106, 186)             \
  KEY(f17, 64, 187)              \
  KEY(f18, 79, 188)              \
  KEY(f19, 80, 189)              \
  KEY(f20, 90, 190)              \
  KEY(keypad0, 82, 82)           \
  KEY(keypad1, 83, 79)           \
  KEY(keypad2, 84, 80)           \
  KEY(keypad3, 85, 81)           \
  KEY(keypad4, 86, 75)           \
  KEY(keypad5, 87, 76)           \
  KEY(keypad6, 88, 77)           \
  KEY(keypad7, 89, 71)           \
  KEY(keypad8, 91, 72)           \
  KEY(keypad9, 92, 73)           \
  KEY(keypadClear, 71, 69)       \
  KEY(keypadDecimal, 65, 83)     \
  KEY(keypadDivide, 75, 98)      \
  KEY(keypadEnter, 76, 96)       \
  KEY(keypadEquals, 81, 117)     \
  KEY(keypadMinus, 78, 74)       \
  KEY(keypadMultiply, 67, 55)    \
  KEY(keypadPlus, 69, 78)

namespace platform {

/// The virtual key codes by name. `return_` and `delete_` would be words of the language without their tail.
namespace KeyCode {
enum : int {
#define PLATFORM_KEY_CODE(name, virtualCode, evdevCode) name = virtualCode,
  PLATFORM_NAMED_KEYS(PLATFORM_KEY_CODE)
#undef PLATFORM_KEY_CODE
};
}  // namespace KeyCode

/// The evdev code at the position of a virtual key code; nullopt if the code has no name.
[[nodiscard]] std::optional<int> evdevCode(qint64 keyCode);
/// The virtual key code at the position of an evdev code; nullopt if no named key sits there.
[[nodiscard]] std::optional<int> keyCode(int evdevCode);

}  // namespace platform
