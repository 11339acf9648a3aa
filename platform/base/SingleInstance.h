#pragma once

#include "platform/system/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QSocketNotifier;

namespace platform {

/// What somebody who starts the program wants of it.
struct LaunchRequest {
  QByteArray action;           // lower-case letters and dashes; empty just to come forward
  QByteArray activationToken;  // the desktop's, by which a window may take the keyboard; empty if none

  bool operator==(const LaunchRequest&) const = default;
};

/// As one instance tells it to another. A token that no desktop would give for its length stays behind.
[[nodiscard]] QByteArray encoded(const LaunchRequest& request);
/// Absent for anything that `encoded` doesn't make.
[[nodiscard]] std::optional<LaunchRequest> decodedLaunchRequest(const QByteArray& message);

/// Lets one instance of the program run for each user and display, and hear what the others were started for.
///
/// The first instance holds a lock and listens on a socket beside it, both in the session's runtime folder;
/// the system drops the lock when the process ends in whatever way, so nothing stale ever keeps a new
/// instance out. Needs neither a display nor the toolkit's application object until the first instance sets
/// its handler.
class SingleInstance {
 public:
  enum class Standing {
    First,      // also where the runtime folder can't be used at all
    Delivered,  // the first instance has taken the request, and acts on it
    Unanswered  // there is a first instance, but it took nothing for as long as the limit
  };
  static constexpr std::chrono::milliseconds patience{20'000};

  /// Takes the lock. Where another instance has it, waits until that one has taken the request. One that is
  /// just starting takes it a little later; the place of one that ends meanwhile is this one's.
  explicit SingleInstance(const LaunchRequest& request = {}, std::chrono::milliseconds limit = patience);
  /// One name for all the names that a display has, of an X server or, if that is named, a Wayland one.
  [[nodiscard]] static QString sessionName(const QString& display, const QString& waylandDisplay);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  [[nodiscard]] Standing standing() const { return result; }
  /// Called from the event loop with each request of another instance, also those from before this call; for
  /// the first instance only. Until then the others wait.
  void setRequestHandler(std::function<void(const LaunchRequest&)> handler);

 private:
  struct Later {
    void operator()(QSocketNotifier* notifier) const;
  };
  struct Caller {
    Descriptor connection;
    std::unique_ptr<QSocketNotifier, Later> notifier;
  };

  void listen(const QByteArray& socketPath);
  void acceptCallers();
  void hear(int connection);

  Standing result = Standing::First;
  Descriptor lock;
  Descriptor listener;
  std::unique_ptr<QSocketNotifier> notifier;
  std::vector<Caller> callers;  // who have connected and said nothing yet
  std::function<void(const LaunchRequest&)> onRequest;
};

}  // namespace platform
