#pragma once

#include "platform/base/Result.h"

#include <QString>

#include <optional>

namespace platform {

/// Where this build of the program gets its updates.
struct UpdateSource {
  QString feed;  // the feed's address
  QString key;   // the public Ed25519 key of the program's makers, in base64

  /// From the program's information file, a JSON object with the members "updateFeed" and "updateKey". Absent
  /// where both are empty or missing; an error where they can't be used, or there is no such file.
  [[nodiscard]] static Result<std::optional<UpdateSource>> read(const QString& informationFile);
};

}  // namespace platform
