#pragma once

#include "platform/portal/Portal.h"

#include <QMap>

namespace platform {

/// Hot keys that the desktop keeps for this program: it offers the user what the program asks for, lets him
/// choose other keys in its own settings, and tells of each press and release. Its own session lasts as long
/// as this object. Main thread only.
class PortalShortcuts : public QObject {
  Q_OBJECT

 public:
  /// By which the session goes, from start to start. Some desktops remember the user's keys by it too.
  static const QString token;

  struct Shortcut {
    QString id;                // the same from start to start: the desktop remembers the user's keys by it
    QString description;       // in the user's language
    QString preferredTrigger;  // "ALT+SHIFT+s"; may be empty
  };
  /// The keys that the desktop has given, in its own words, by shortcut; a shortcut without keys is missing.
  using Triggers = QMap<QString, QString>;
  struct Callbacks {
    std::function<void(const QString&id)> onActivated, onDeactivated;
    std::function<void()> onTriggers;
    /// The session isn't to be had or has ended: why, and whether it stood before. Called once, last.
    enum class End { NotOffered, Ended };
    std::function<void(End end, const QString& reason)> onEnd;
  };

  /// None of the callbacks comes before this has returned; each may end this object. A front end that isn't
  /// running is started if `frontEnd` says so.
  PortalShortcuts(std::vector<Shortcut> shortcuts, Portal::FrontEnd frontEnd, Callbacks callbacks);
  ~PortalShortcuts() override;

  /// Whether the desktop has opened the session: it does have such a thing.
  [[nodiscard]] bool isOpen() const { return !session.isEmpty(); }
  [[nodiscard]] const Triggers& triggers() const { return given; }

 private:
  void opened(const PortalAnswer& answer);
  void listed(const PortalAnswer& answer);
  void bindAll();
  void bound(const PortalAnswer& answer);
  void take(const QVariant& shortcuts);
  void end(Callbacks::End how, const QString& reason);
  Q_SLOT void activated(const QDBusMessage& message);
  Q_SLOT void deactivated(const QDBusMessage& message);
  Q_SLOT void changed(const QDBusMessage& message);
  Q_SLOT void closed();
  [[nodiscard]] QString idFrom(const QDBusMessage& message) const;

  const std::shared_ptr<Portal> portal;
  const std::vector<Shortcut> wanted;
  Callbacks callbacks;
  QString session;  // the path of its object
  Triggers given;
  std::unique_ptr<PortalRequest> asking;
  Subscription going;
  WorkItem ending;
};

}  // namespace platform
