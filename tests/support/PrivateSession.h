#pragma once

#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"

#include <QTemporaryDir>

#include <memory>

namespace testing_support {

/// Whether a Wayland session has a place for X programs.
enum class XWayland { Off, On };

/// A session of a test's own: a home folder, a bus, and fonts that are the same everywhere. Programs started
/// in it see nothing of the user's own session, and all of them, also those that they have started in turn,
/// are gone when this object goes. It has no display: those who derive from it bring one.
class PrivateSession {
 public:
  virtual ~PrivateSession();
  PrivateSession(const PrivateSession&) = delete;
  PrivateSession& operator=(const PrivateSession&) = delete;

  /// Starts a program and leaves it running.
  [[nodiscard]] std::unique_ptr<Program> start(const QStringList& command) const;
  /// Runs a program to its end, which must be a good one, and returns what it has written.
  QByteArray run(const QStringList& command) const;

  /// The absolute path of `relative` in the home folder, which alone is there at first.
  [[nodiscard]] QString home(const QString& relative = {}) const;
  /// Writes a file below the home folder, making the folders above it.
  QString write(const QString& relative, const QByteArray& contents) const;

  /// What a program finds in DBUS_SESSION_BUS_ADDRESS.
  [[nodiscard]] const QString& busAddress() const { return bus->address(); }
  /// What programs that are started from now on find in their environment.
  [[nodiscard]] const QProcessEnvironment& environment() const { return variables; }
  void setVariable(const char* name, const QString& value);

 protected:
  PrivateSession();

  /// Ends all that still runs in the session.
  void endPrograms();

  QProcessEnvironment variables;

 private:
  QTemporaryDir folder;
  std::unique_ptr<PrivateBus> bus;
};

}  // namespace testing_support
