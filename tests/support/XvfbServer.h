#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace testing_support {

/// An X server without a screen of its own, private to one test: it picks a free display number, runs for as
/// long as this object lives, and ends with the test program even if that is killed.
///
/// Its screen is `width` by `height` pixels at the given depth (24, 16 or 8 bits), black, with the X server's
/// own keyboard (a US layout). `options` go to the server as they are, for example "-ardelay", "50". Throws
/// std::runtime_error where the server can't be started.
class XvfbServer {
 public:
  XvfbServer(int width, int height, int depth = 24, const std::vector<std::string>& options = {});
  ~XvfbServer();
  XvfbServer(const XvfbServer&) = delete;
  XvfbServer& operator=(const XvfbServer&) = delete;

  /// What a program finds in DISPLAY, for example ":3".
  [[nodiscard]] const std::string& display() const { return name; }
  [[nodiscard]] pid_t processId() const { return process; }
  /// Ends the server while programs still use it. It stays ended.
  void kill();

 private:
  std::string name;
  pid_t process = -1;
};

}  // namespace testing_support
