#pragma once

#include "tests/support/PrivateSession.h"

#include <QImage>
#include <QPoint>

#include <functional>
#include <vector>

namespace e2e {

using namespace testing_support;

/// A Wayland session of one of the large desktops, with its own portal, and with one output that shows a
/// pixel for each point. Keys are named by their position, as in linux/input-event-codes.h.
class DesktopSession : public PrivateSession {
 public:
  static constexpr QSize size{1280, 800};

  /// What the output shows now, without the pointer.
  [[nodiscard]] virtual QImage picture() = 0;
  virtual void moveTo(QPoint point) = 0;
  /// The left button.
  virtual void turnButton(bool isDown) = 0;
  virtual void turnKey(int evdevCode, bool isDown) = 0;

  /// What the output shows once it has stayed the same for half a second.
  [[nodiscard]] QImage settledPicture();
  void tapKey(int evdevCode);
  /// Presses the left button at the first, goes to the last in many steps and on until it has taken effect,
  /// and lets go.
  void drag(
      QPoint from, QPoint to, const std::function<bool()>& hasArrived = [] { return true; });

 protected:
  DesktopSession();
  /// Starts a program of the desktop's own; they end in the reverse order.
  Program& add(const QStringList& command);
  void endDesktop();
  /// Starts the portal's back end, which has the bus name `service`, and then its front end.
  void startPortal(const QString& backEnd, const QString& service);
  void waitForName(const QString& service) const;

  static inline const QString displayName = QStringLiteral("wayland-1");

 private:
  std::vector<std::unique_ptr<Program>> programs;
};

}  // namespace e2e
