#pragma once

#include <QtGlobal>

#include <optional>

/// Every key that has a name: KEY(name, virtual key code, evdev code). A virtual key code is a position on
/// the keyboard, whatever the layout prints there; the evdev code is the kernel's number for the same
/// position, by its name in <linux/input-event-codes.h>. Where the two keyboards differ, the position
/// decides: `help` sits where a PC keyboard has Insert, `keypadClear` where it has NumLock. `function` has an
/// evdev code that X11 can't carry.
///
/// The last five are a PC keyboard's own. `isoKey` is the one that ISO keyboards have beside the left Shift.
/// Print Screen, Scroll Lock and Pause sit where a full keyboard of the other kind has F13 to F15; since
/// there are PC keyboards with both, each is a key of its own, and has for a number 256 plus its evdev code,
/// which no virtual key code can be.
#define PLATFORM_NAMED_KEYS(KEY)          \
  KEY(a, 0, KEY_A)                        \
  KEY(b, 11, KEY_B)                       \
  KEY(c, 8, KEY_C)                        \
  KEY(d, 2, KEY_D)                        \
  KEY(e, 14, KEY_E)                       \
  KEY(f, 3, KEY_F)                        \
  KEY(g, 5, KEY_G)                        \
  KEY(h, 4, KEY_H)                        \
  KEY(i, 34, KEY_I)                       \
  KEY(j, 38, KEY_J)                       \
  KEY(k, 40, KEY_K)                       \
  KEY(l, 37, KEY_L)                       \
  KEY(m, 46, KEY_M)                       \
  KEY(n, 45, KEY_N)                       \
  KEY(o, 31, KEY_O)                       \
  KEY(p, 35, KEY_P)                       \
  KEY(q, 12, KEY_Q)                       \
  KEY(r, 15, KEY_R)                       \
  KEY(s, 1, KEY_S)                        \
  KEY(t, 17, KEY_T)                       \
  KEY(u, 32, KEY_U)                       \
  KEY(v, 9, KEY_V)                        \
  KEY(w, 13, KEY_W)                       \
  KEY(x, 7, KEY_X)                        \
  KEY(y, 16, KEY_Y)                       \
  KEY(z, 6, KEY_Z)                        \
  KEY(zero, 29, KEY_0)                    \
  KEY(one, 18, KEY_1)                     \
  KEY(two, 19, KEY_2)                     \
  KEY(three, 20, KEY_3)                   \
  KEY(four, 21, KEY_4)                    \
  KEY(five, 23, KEY_5)                    \
  KEY(six, 22, KEY_6)                     \
  KEY(seven, 26, KEY_7)                   \
  KEY(eight, 28, KEY_8)                   \
  KEY(nine, 25, KEY_9)                    \
  KEY(capsLock, 57, KEY_CAPSLOCK)         \
  KEY(shift, 56, KEY_LEFTSHIFT)           \
  KEY(function, 63, KEY_FN)               \
  KEY(control, 59, KEY_LEFTCTRL)          \
  KEY(option, 58, KEY_LEFTALT)            \
  KEY(command, 55, KEY_LEFTMETA)          \
  KEY(rightCommand, 54, KEY_RIGHTMETA)    \
  KEY(rightOption, 61, KEY_RIGHTALT)      \
  KEY(rightControl, 62, KEY_RIGHTCTRL)    \
  KEY(rightShift, 60, KEY_RIGHTSHIFT)     \
  KEY(return_, 36, KEY_ENTER)             \
  KEY(backslash, 42, KEY_BACKSLASH)       \
  KEY(backtick, 50, KEY_GRAVE)            \
  KEY(comma, 43, KEY_COMMA)               \
  KEY(equal, 24, KEY_EQUAL)               \
  KEY(minus, 27, KEY_MINUS)               \
  KEY(period, 47, KEY_DOT)                \
  KEY(quote, 39, KEY_APOSTROPHE)          \
  KEY(semicolon, 41, KEY_SEMICOLON)       \
  KEY(slash, 44, KEY_SLASH)               \
  KEY(space, 49, KEY_SPACE)               \
  KEY(tab, 48, KEY_TAB)                   \
  KEY(leftBracket, 33, KEY_LEFTBRACE)     \
  KEY(rightBracket, 30, KEY_RIGHTBRACE)   \
  KEY(pageUp, 116, KEY_PAGEUP)            \
  KEY(pageDown, 121, KEY_PAGEDOWN)        \
  KEY(home, 115, KEY_HOME)                \
  KEY(end, 119, KEY_END)                  \
  KEY(upArrow, 126, KEY_UP)               \
  KEY(rightArrow, 124, KEY_RIGHT)         \
  KEY(downArrow, 125, KEY_DOWN)           \
  KEY(leftArrow, 123, KEY_LEFT)           \
  KEY(escape, 53, KEY_ESC)                \
  KEY(delete_, 51, KEY_BACKSPACE)         \
  KEY(deleteForward, 117, KEY_DELETE)     \
  KEY(help, 114, KEY_INSERT)              \
  KEY(mute, 74, KEY_MUTE)                 \
  KEY(volumeUp, 72, KEY_VOLUMEUP)         \
  KEY(volumeDown, 73, KEY_VOLUMEDOWN)     \
  KEY(f1, 122, KEY_F1)                    \
  KEY(f2, 120, KEY_F2)                    \
  KEY(f3, 99, KEY_F3)                     \
  KEY(f4, 118, KEY_F4)                    \
  KEY(f5, 96, KEY_F5)                     \
  KEY(f6, 97, KEY_F6)                     \
  KEY(f7, 98, KEY_F7)                     \
  KEY(f8, 100, KEY_F8)                    \
  KEY(f9, 101, KEY_F9)                    \
  KEY(f10, 109, KEY_F10)                  \
  KEY(f11, 103, KEY_F11)                  \
  KEY(f12, 111, KEY_F12)                  \
  KEY(f13, 105, KEY_F13)                  \
  KEY(f14, 107, KEY_F14)                  \
  KEY(f15, 113, KEY_F15)                  \
  KEY(f16, 106, KEY_F16)                  \
  KEY(f17, 64, KEY_F17)                   \
  KEY(f18, 79, KEY_F18)                   \
  KEY(f19, 80, KEY_F19)                   \
  KEY(f20, 90, KEY_F20)                   \
  KEY(keypad0, 82, KEY_KP0)               \
  KEY(keypad1, 83, KEY_KP1)               \
  KEY(keypad2, 84, KEY_KP2)               \
  KEY(keypad3, 85, KEY_KP3)               \
  KEY(keypad4, 86, KEY_KP4)               \
  KEY(keypad5, 87, KEY_KP5)               \
  KEY(keypad6, 88, KEY_KP6)               \
  KEY(keypad7, 89, KEY_KP7)               \
  KEY(keypad8, 91, KEY_KP8)               \
  KEY(keypad9, 92, KEY_KP9)               \
  KEY(keypadClear, 71, KEY_NUMLOCK)       \
  KEY(keypadDecimal, 65, KEY_KPDOT)       \
  KEY(keypadDivide, 75, KEY_KPSLASH)      \
  KEY(keypadEnter, 76, KEY_KPENTER)       \
  KEY(keypadEquals, 81, KEY_KPEQUAL)      \
  KEY(keypadMinus, 78, KEY_KPMINUS)       \
  KEY(keypadMultiply, 67, KEY_KPASTERISK) \
  KEY(keypadPlus, 69, KEY_KPPLUS)         \
  KEY(isoKey, 10, KEY_102ND)              \
  KEY(contextMenu, 110, KEY_COMPOSE)      \
  KEY(printScreen, 355, KEY_SYSRQ)        \
  KEY(scrollLock, 326, KEY_SCROLLLOCK)    \
  KEY(pause, 375, KEY_PAUSE)

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
