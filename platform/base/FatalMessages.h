#pragma once

#include <QString>

namespace platform {

/// While it lives, what the toolkit calls fatal ends the program with status 1 and one line in the log: this
/// beginning, and why. Without it the program would be aborted, with a trace of its memory left behind. For
/// the time in which the toolkit looks for a display.
///
/// The toolkit's other messages wait until then, and come when this goes. One at a time.
class FatalMessages {
 public:
  explicit FatalMessages(const QString& beginning);
  ~FatalMessages();
  FatalMessages(const FatalMessages&) = delete;
  FatalMessages& operator=(const FatalMessages&) = delete;
};

}  // namespace platform
