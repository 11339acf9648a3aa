#include "platform/input/HotKeyService.h"

#include "platform/base/Environment.h"
#include "platform/base/Log.h"
#include "platform/input/DesktopHotKeys.h"
#include "platform/input/X11HotKeyService.h"
#include "platform/input/portal/PortalKeyBinder.h"
#include "platform/input/wayland/BoundHotKeyService.h"
#include "platform/input/wayland/GnomeKeyBinder.h"
#include "platform/input/wayland/SwayKeyBinder.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

namespace platform {
namespace {

class NoHotKeyService : public HotKeyService {
 public:
  Result<HotKeyReference> registerHotKey(const HotKey&) override { return noService(); }
  void unregisterHotKey(HotKeyReference) override {}
  Result<> installEventHandler(EventHandler) override { return noService(); }
  void listen(Keys) override {}

 private:
  static Error noService() {
    return {QStringLiteral("this desktop offers no way to watch keys"), HotKeyStatuses::invalidHotKey};
  }
};

/// The ways of a Wayland session, the best first. sway has no portal for hot keys, so none is started for it;
/// one that runs may be that of a relative.
std::vector<BoundHotKeyService::Way> waylandWays() {
  std::vector<BoundHotKeyService::Way> ways;
  const QByteArray swaySocket = qgetenv("SWAYSOCK");
  const Portal::FrontEnd frontEnd =
      swaySocket.isEmpty() ? Portal::FrontEnd::Started : Portal::FrontEnd::Present;
  ways.emplace_back([frontEnd](KeyBinder::Listener listener) {
    return std::make_unique<PortalKeyBinder>(frontEnd, std::move(listener));
  });
  if (!swaySocket.isEmpty())
    ways.emplace_back([swaySocket](KeyBinder::Listener listener) {
      return std::make_unique<SwayKeyBinder>(swaySocket, std::move(listener));
    });
  if (runningHotKeyDesktop() == HotKeyDesktop::Gnome)
    ways.emplace_back(
        [](KeyBinder::Listener listener) { return std::make_unique<GnomeKeyBinder>(std::move(listener)); });
  return ways;
}

class WaylandHotKeyService : public BoundHotKeyService {
 public:
  WaylandHotKeyService() : BoundHotKeyService(waylandWays()) {}

 private:
  Subscription comingPortal;
  const WorkItem watching = MainQueue::main().asyncAfter(
      {}, [this] { comingPortal = Portal::shared()->observeComing([this] { tryAgain(); }); });
};

}  // namespace

HotKeyService& HotKeyService::current() {
  return *Environment::shared<HotKeyService>([] { return std::make_shared<NoHotKeyService>(); });
}

std::shared_ptr<HotKeyService> HotKeyService::forDesktop() {
  if (xcb_connection_t* const connection = x11Connection())
    return std::make_shared<X11HotKeyService>(connection);
  if (waylandDisplay())
    return std::make_shared<WaylandHotKeyService>();
  log(QStringLiteral("Sorrel hot keys: this desktop offers no way to watch keys"));
  return std::make_shared<NoHotKeyService>();
}

}  // namespace platform
