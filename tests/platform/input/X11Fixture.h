#pragma once

#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XTestInput.h"

#include <QAbstractNativeEventFilter>
#include <QStringList>

#include <gtest/gtest.h>
#include <vector>
#include <xcb/xcb.h>

namespace testing_support {

/// The display of the test program's private X server.
const std::string& privateDisplay();

/// Gives the server another keyboard layout, as a user does: one for each group, "ru,us"; and these options
/// of the keyboard, "grp:alt_shift_toggle", but no others.
void setLayout(const QString& layouts, const QString& options = {});

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
