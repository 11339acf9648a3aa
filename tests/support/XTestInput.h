#pragma once

#include <string>

struct xcb_connection_t;

namespace testing_support {

/// Presses the keys and moves the pointer of an X server, as a hand at the keyboard and mouse would.
///
/// Keys are named by their position, as in linux/input-event-codes.h (KEY_SPACE), whatever the layout makes
/// of them. Points are pixels of the whole screen, from its top left corner. Each call returns when the
/// server has acted on it, a move when the pointer is there. What is still pressed when this object goes away
/// is released. Throws std::runtime_error where the display can't be reached, or the pointer doesn't come.
class XTestInput {
 public:
  explicit XTestInput(const std::string& display);
  ~XTestInput();
  XTestInput(const XTestInput&) = delete;
  XTestInput& operator=(const XTestInput&) = delete;

  void pressKey(int evdevCode);
  void releaseKey(int evdevCode);
  void tapKey(int evdevCode);
  void moveTo(int x, int y);
  /// 1 is the left button, 2 the middle one, 3 the right one.
  void pressButton(int button);
  void releaseButton(int button);
  void clickButton(int button);
  /// Both clicks reach the server at once, so that they are a double click on a busy machine too.
  void doubleClick(int button);

 private:
  void send(int type, int detail, int x, int y);
  [[nodiscard]] bool isPointerAt(int x, int y) const;
  void releaseAll();

  xcb_connection_t* connection;
};

}  // namespace testing_support
