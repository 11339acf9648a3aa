#include "platform/input/HotKeyService.h"

#include "platform/base/Environment.h"
#include "platform/base/Log.h"
#include "platform/input/X11HotKeyService.h"
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

}  // namespace

HotKeyService& HotKeyService::current() {
  return *Environment::shared<HotKeyService>([] { return std::make_shared<NoHotKeyService>(); });
}

std::shared_ptr<HotKeyService> HotKeyService::forDesktop() {
  if (xcb_connection_t* const connection = x11Connection())
    return std::make_shared<X11HotKeyService>(connection);
  log(QStringLiteral("Sorrel hot keys: this desktop offers no way to watch keys"));
  return std::make_shared<NoHotKeyService>();
}

}  // namespace platform
