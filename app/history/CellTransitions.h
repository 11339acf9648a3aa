#pragma once

#include "platform/desktop/Motion.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <unordered_map>

namespace sorrel {

/// One look of the thumbnails that comes and goes smoothly, each thumbnail for itself, by its path.
class CellTransitions {
 public:
  /// `onChange` is told the path whenever a value has changed.
  CellTransitions(std::chrono::milliseconds duration, std::function<void(const QByteArray&)> onChange);

  /// From 0 to 1.
  [[nodiscard]] double value(const QByteArray& path) const;
  void setOn(const QByteArray& path, bool isOn);

 private:
  const std::chrono::milliseconds duration;
  const std::function<void(const QByteArray&)> onChange;
  std::unordered_map<QByteArray, std::unique_ptr<platform::Motion>> motions;  // of those above 0
};

}  // namespace sorrel
