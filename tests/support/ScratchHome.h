#pragma once

#include "platform/base/Environment.h"

#include <QString>
#include <QTemporaryDir>

#include <optional>
#include <utility>
#include <vector>

namespace testing_support {

/// A home folder of the test's own, and the program's services made anew in it. While it lives, HOME and the
/// XDG directories point into it and nowhere else; afterwards the variables are as they were. Each test
/// program has one for its whole run (its main makes it), and a test that looks at the folder's contents
/// makes another for itself.
class ScratchHome {
 public:
  ScratchHome();
  ~ScratchHome();
  ScratchHome(const ScratchHome&) = delete;
  ScratchHome& operator=(const ScratchHome&) = delete;

  /// Lets the program's services end and makes them anew, as if the program were started again in this home.
  void restart();

  /// The absolute path of `relative` inside the home folder; the home folder itself without an argument.
  [[nodiscard]] QString path(const QString& relative = {}) const;
  /// Writes a file, making the folders above it; returns its absolute path.
  QString write(const QString& relative, const QByteArray& contents = {}) const;

 private:
  QTemporaryDir folder;
  std::optional<platform::Environment> environment;
  std::vector<std::pair<QByteArray, std::optional<QByteArray>>> saved;
};

}  // namespace testing_support
