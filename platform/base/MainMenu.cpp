#include "platform/base/MainMenu.h"

#include "platform/base/Environment.h"

namespace platform {

std::shared_ptr<const Menu> mainMenu() {
  return Environment::shared<const Menu>([] { return nullptr; });
}

}  // namespace platform
