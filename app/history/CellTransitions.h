#pragma once

#include "platform/desktop/Motion.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <unordered_map>

namespace sorrel {

/// One look of the thumbnails that comes and goes smoothly, each thumbnail for itself, by its path.
class CellTransitions {
 public:
  /// `onChange` is told the path whenever a value has changed.
  CellTransitions(std::chrono::milliseconds duration, std::function<void(const QString&)> onChange);

  /// From 0 to 1.
  [[nodiscard]] double value(const QString& path) const;
  void setOn(const QString& path, bool isOn);

 private:
  const std::chrono::milliseconds duration;
  const std::function<void(const QString&)> onChange;
  std::unordered_map<QString, std::unique_ptr<platform::Motion>> motions;  // of those above 0
};

}  // namespace sorrel
