#pragma once

#include "platform/base/FileWatch.h"
#include "platform/base/Result.h"

#include <QString>

#include <functional>

namespace platform {

/// Whether the desktop starts this program when the user logs in: an entry in the autostart folders, by the
/// rules of desktops. The user's own entry goes before one of the system's, and may say that the program is
/// not to be started. Main thread only.
class LoginItem {
 public:
  /// `onChange` is called from the event loop when the user's entry has changed, whoever did that.
  explicit LoginItem(std::function<void()> onChange);

  /// As the entries are now. One that can't be read, or starts nothing that is there, is as good as none.
  [[nodiscard]] bool isEnabled() const;
  /// Writes the user's entry, or removes it where that says the same.
  Result<> setEnabled(bool isWanted);

 private:
  const QString ownPath;
  const std::function<void()> onChange;
  FileWatch file;
  FileWatch folder;  // which may not be there at first
};

}  // namespace platform
