#pragma once

#include "platform/system/Descriptor.h"

#include <QString>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace platform {

/// Lets one instance of the program run for each user and display.
///
/// The first instance holds a lock and listens on a socket beside it, both in the session's runtime folder;
/// the system drops the lock when the process ends in whatever way, so nothing stale ever keeps a new
/// instance out.
class SingleInstance {
 public:
  /// Takes the lock. Where another instance has it, rings that one instead; where the runtime folder can't be
  /// used at all, this instance counts as the first.
  SingleInstance();
  /// One name for all the names that a display has, of an X server or, if that is named, a Wayland one.
  [[nodiscard]] static QString sessionName(const QString& display, const QString& waylandDisplay);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  [[nodiscard]] bool isFirst() const { return first; }
  /// Called on the main thread each time another instance was started; for the first instance only.
  void setRungHandler(std::function<void()> handler);

 private:
  void listen(const QByteArray& socketPath);

  bool first = true;
  Descriptor lock;
  Descriptor bell;
  std::unique_ptr<QSocketNotifier> notifier;
  std::function<void()> onRung;
};

}  // namespace platform
