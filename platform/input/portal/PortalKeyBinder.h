#pragma once

#include "platform/input/wayland/KeyBinder.h"
#include "platform/portal/PortalShortcuts.h"

namespace platform {

/// Hot keys from the desktop's portal, which shows the user what they are for and lets him choose others. The
/// keys that were asked for are a proposal.
class PortalKeyBinder : public KeyBinder {
 public:
  /// A front end that isn't running is started if `frontEnd` says so.
  PortalKeyBinder(Portal::FrontEnd frontEnd, Listener listener);

  void bind(const std::vector<HotKey>& hotKeys) override;
  HotKeyState state() const override;

 private:
  void open();
  void triggersChanged();
  void moveFromFormerPlace(const QStringList& places);
  void ended(PortalShortcuts::Callbacks::End end, const QString& reason);

  const Portal::FrontEnd frontEnd;
  const Listener listener;
  std::vector<HotKey> wanted;
  std::unique_ptr<PortalShortcuts> shortcuts;
  bool isKnown = false;  // the desktop has had a session for us: it knows this way
  bool hasLookedForFormer = false;
  QObject context;  // of the question for them
  WorkItem again;
  const Subscription coming;
};

}  // namespace platform
