#pragma once

#include "platform/base/MainQueue.h"

#include <QAbstractNativeEventFilter>
#include <QDBusPendingCallWatcher>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// The tray that the desktop has now.
struct Tray {
  enum class Kind {
    None,
    /// Icons are announced on the session bus, and the desktop's panel draws them and their menus.
    StatusNotifier,
    /// Icons are windows of their own, docked into the tray's.
    XEmbed,
  };
  Kind kind = Kind::None;
  /// With StatusNotifier: the unique name on the bus of the program that icons register with.
  QString watcher;
  /// With XEmbed: the X window that icons dock into.
  quint32 window = 0;

  bool operator==(const Tray&) const = default;
};

/// Tells which tray the desktop has, now and after each change: a desktop often starts its panel after the
/// programs of the session, and its user may exchange it. A StatusNotifier tray goes before an XEmbed one.
///
/// Nothing waits for the desktop. While nobody answers the first question on the bus, that of X counts; but
/// it has a moment's grace, so that an icon doesn't move from one tray to the other at each start.
class TrayWatch : public QObject, private QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  /// `onChange` hears from the event loop, never within the constructor.
  explicit TrayWatch(std::function<void(const Tray&)> onChange);
  ~TrayWatch() override;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  void listenOnBus();
  void listenOnX();
  Q_SLOT void look();
  void lookSoon();
  void answered(const QDBusPendingCallWatcher& answer);
  void decide(const QString& watcher);
  [[nodiscard]] quint32 managerWindow() const;

  const std::function<void(const Tray&)> onChange;
  std::optional<Tray> tray;
  std::unique_ptr<QDBusPendingCallWatcher> question;  // the last one asked
  WorkItem grace;
  WorkItem soon;
  quint32 managerAtom = 0;
  quint32 selectionAtom = 0;
};

}  // namespace platform
