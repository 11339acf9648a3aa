#pragma once

#include "KeyboardShortcuts/recorder/RecorderRules.h"

#include <QObject>

#include <functional>
#include <optional>

class QKeyEvent;

namespace KeyboardShortcuts {

/// Hears of the keys and clicks in all windows of this program before anything else in it does, as long as it
/// lives. Meanwhile no shortcut of a window or a menu acts, and a held key counts once.
class LocalEventMonitor : public QObject {
 public:
  enum class Outcome { PassedOn, Dropped };
  using Callback = std::function<Outcome(const RecorderEvent&)>;

  /// The callback may destroy the monitor. It hears again of what it has passed on.
  explicit LocalEventMonitor(Callback callback);

 private:
  struct Release {
    quint32 scanCode = 0;
    quint64 timestamp = 0;
    bool operator==(const Release&) const = default;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;
  [[nodiscard]] bool isRepeat(const QKeyEvent& press) const;

  const Callback callback;
  std::optional<Release> lastRelease;
};

}  // namespace KeyboardShortcuts
