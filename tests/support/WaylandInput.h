#pragma once

#include <QPointF>
#include <QSize>

#include <memory>
#include <set>

struct wl_display;
struct xkb_keymap;
struct xkb_state;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_v1;

namespace platform {
class WaylandGlobals;
}

namespace testing_support {

/// Presses the keys and moves the pointer of a compositor that lets its clients do so, as a hand at the
/// keyboard and mouse would. The seat has a pointer, and a keyboard if it is wished, for as long as this
/// object lives.
///
/// Keys are named by their position, as in linux/input-event-codes.h (KEY_SPACE), whatever the layout makes
/// of them. Points are in the compositor's own space, in which all outputs lie. Each call returns when the
/// compositor has acted on it. Throws std::runtime_error where it doesn't offer this.
class WaylandInput {
 public:
  /// `layout` is a keyboard layout's name ("us"); without one there is no keyboard.
  /// The connection and what it offers must outlive this.
  WaylandInput(wl_display* display, const platform::WaylandGlobals& globals, const QString& layout);
  ~WaylandInput();
  WaylandInput(const WaylandInput&) = delete;
  WaylandInput& operator=(const WaylandInput&) = delete;

  void pressKey(int evdevCode) { turnKey(evdevCode, true); }
  void releaseKey(int evdevCode) { turnKey(evdevCode, false); }
  void tapKey(int evdevCode);
  /// `space` is what all outputs cover; it begins at (0, 0).
  void moveTo(QPointF point, QSize space);
  /// 1 is the left button, 2 the middle one, 3 the right one.
  void pressButton(int button) { turnButton(button, true); }
  void releaseButton(int button) { turnButton(button, false); }
  void clickButton(int button);

 private:
  void plugIn(zwp_virtual_keyboard_v1* newKeyboard, const QString& layout);
  void turnKey(int evdevCode, bool isDown);
  void turnButton(int button, bool isDown);
  void roundTrip();

  wl_display* display;
  std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> keymap;
  std::unique_ptr<xkb_state, void (*)(xkb_state*)> state;
  std::unique_ptr<zwp_virtual_keyboard_v1, void (*)(zwp_virtual_keyboard_v1*)> keyboard;
  std::unique_ptr<zwlr_virtual_pointer_v1, void (*)(zwlr_virtual_pointer_v1*)> pointer;
};

}  // namespace testing_support
