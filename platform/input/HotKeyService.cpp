#include "platform/input/HotKeyService.h"

#include "platform/base/Log.h"
#include "platform/input/X11HotKeyService.h"
#include "platform/x11/X11Connection.h"

namespace platform {
namespace {

class NoHotKeyService : public HotKeyService {
 public:
  Registration registerHotKey(quint32, quint32, HotKeyId) override { return {}; }
  void unregisterHotKey(HotKeyReference) override {}
  Installation installEventHandler(EventHandler) override { return {}; }
  void addEventTypes(EventHandlerReference, std::span<const EventTypeSpec>) override {}
  void removeEventTypes(EventHandlerReference, std::span<const EventTypeSpec>) override {}
  SystemVersion systemVersion() const override { return {}; }
};

std::shared_ptr<HotKeyService>& currentSlot() {
  static std::shared_ptr<HotKeyService> slot = std::make_shared<NoHotKeyService>();
  return slot;
}

}  // namespace

HotKeyService& HotKeyService::current() {
  return *currentSlot();
}

void HotKeyService::setCurrent(std::shared_ptr<HotKeyService> service) {
  currentSlot() = service ? std::move(service) : std::make_shared<NoHotKeyService>();
}

std::shared_ptr<HotKeyService> HotKeyService::forDesktop() {
  if (xcb_connection_t* const connection = x11Connection())
    return std::make_shared<X11HotKeyService>(connection);
  log(QStringLiteral("Sorrel hot keys: this desktop offers no way to watch keys"));
  return std::make_shared<NoHotKeyService>();
}

}  // namespace platform
