#pragma once

#include "tests/support/Program.h"

#include <gtest/gtest.h>
#include <memory>

namespace testing_support {

/// A session bus that starts no service: what is on it, the test has put there. It runs for as long as this
/// object lives.
class PrivateBus {
 public:
  explicit PrivateBus(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

  /// What a program finds in DBUS_SESSION_BUS_ADDRESS.
  [[nodiscard]] const QString& address() const { return name; }

 private:
  Program daemon;
  QString name;
};

/// Makes a private bus the test program's own session bus, to be handed to
/// testing::AddGlobalTestEnvironment().
class OwnSessionBus : public testing::Environment {
 public:
  void SetUp() override;
  void TearDown() override { bus.reset(); }

 private:
  std::unique_ptr<PrivateBus> bus;
};

}  // namespace testing_support
