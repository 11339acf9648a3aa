#pragma once

#include "tests/support/XTestInput.h"

#include <QAbstractNativeEventFilter>
#include <QStringList>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace testing_support {

/// The display of the test program's private X server.
const std::string& privateDisplay();

/// Runs the event loop until `condition` holds; false if that takes longer than any sound desktop would.
bool waitUntil(const std::function<bool()>& condition);

/// Gives the server another keyboard layout, as a user does: one for each group, "ru,us".
void setLayout(const QString& layouts);

/// A second program on the display, which knows nothing of the first.
class OtherClient {
 public:
  OtherClient();
  ~OtherClient();
  OtherClient(const OtherClient&) = delete;
  OtherClient& operator=(const OtherClient&) = delete;

  enum class Outcome { Done, Refused };
  Outcome grabKeyboard();
  void ungrabKeyboard();
  Outcome grabKey(int evdevCode, uint16_t modifiers);
  void lockGroup(uint8_t group);
  /// Exchanges two rows of the modifier map (0 is Shift, 3 is Mod1).
  void exchangeModifiers(size_t one, size_t other);

 private:
  void roundTrip();

  xcb_connection_t* const connection;
  xcb_window_t root;
};

/// Sees every X event of the application and keeps the key events among them.
class EventLog : public QAbstractNativeEventFilter {
 public:
  EventLog();
  ~EventLog() override;

  /// Returns once the application has dealt with all that the server has sent it so far.
  void settle();
  [[nodiscard]] int presses(int evdevCode) const;

  std::vector<xcb_key_press_event_t> keys;
  int total = 0;  // events of any kind

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  xcb_connection_t* const connection;
  const xcb_window_t window;
  uint32_t sent = 0;
  uint32_t received = 0;
};

}  // namespace testing_support
