#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <functional>

namespace platform {

/// The two kinds of tray that Linux desktops have.
enum class TrayKind {
  None,
  /// Icons are announced on the session bus, and the panel draws them and their menus.
  StatusNotifier,
  /// Icons are windows of their own, embedded in the tray's.
  XEmbed,
};

/// Tells which kind of tray the desktop has now, and when one comes up. It asks the bus and the X server
/// itself: the toolkit decides at the first touch, for as long as the process lives, and a desktop often
/// starts its panel after the programs of the session.
class TrayWatch : public QObject, private QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  TrayWatch();
  ~TrayWatch() override;

  [[nodiscard]] TrayKind kind() const;
  /// From now on calls `handler` when a tray may have come up.
  void watch(std::function<void()> handler);

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  Q_SLOT void mayHaveChanged();

  std::function<void()> onChange;
  quint32 managerAtom = 0;  // asked for once: many a program's messages pass by here
};

}  // namespace platform
