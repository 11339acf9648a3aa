#pragma once

#include "platform/base/Environment.h"
#include "platform/base/Log.h"

#include <QStringList>

#include <memory>

namespace testing_support {

/// Takes over what is logged and printed while it lives.
class LogCapture {
 public:
  LogCapture() = default;
  ~LogCapture() { platform::Environment::provide(before); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  QStringList logged;
  QStringList printed;

 private:
  const std::shared_ptr<const platform::LogRoads> before =
      platform::Environment::provide(std::make_shared<const platform::LogRoads>(
          platform::LogRoads{[this](const QString& line) { logged << line; },
                             [this](const QString& line) { printed << line; }}));
};

}  // namespace testing_support
