#pragma once

#include <QStringList>

#include <functional>
#include <sys/types.h>

namespace bench {

/// A program that runs until this object goes, in this program's own environment.
class Running {
 public:
  explicit Running(const QString& program);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  /// In KiB.
  [[nodiscard]] double proportionalSetSize() const;
  /// How often its threads go to sleep within that time, once it has been used and come to rest.
  [[nodiscard]] double sleepsIn30Seconds(const std::function<void()>& use) const;

 private:
  [[nodiscard]] QString folder() const;
  [[nodiscard]] QStringList threads() const;
  /// Since its start.
  [[nodiscard]] double sleeps() const;

  pid_t process = -1;
};

}  // namespace bench
