#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// A process that a test starts, with its standard error in a file. Ends with the test.
class Child {
 public:
  /// `words` are the program and its arguments.
  Child(const std::vector<std::string>& words, const std::string& display, const std::string& errorFile);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Its exit status; -1 if a signal ended it or if it takes too long.
  [[nodiscard]] int wait();
  void kill(int signal);
  [[nodiscard]] bool isRunning();
  [[nodiscard]] std::string errors() const;

 private:
  pid_t process = -1;
  std::string errorPath;
};

/// Waits for any child that is not one of the above to end, for example one that a child left behind to us;
/// its exit status, -1 if a signal ended it or if it takes too long.
int waitForOrphan();
