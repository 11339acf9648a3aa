#include "platform/base/MainMenu.h"

#include "platform/base/Environment.h"

namespace platform {

std::shared_ptr<const Menu> mainMenu() {
  const auto source = Environment::shared<MainMenu>([] { return nullptr; });
  return source ? (*source)() : nullptr;
}

}  // namespace platform
