#pragma once

#include "platform/base/Menu.h"

#include <functional>
#include <memory>

namespace platform {

/// Gives the menu that speaks for the whole program, anew at each call.
using MainMenu = std::function<std::shared_ptr<const Menu>()>;

/// What the environment's one gives; null where it has none.
[[nodiscard]] std::shared_ptr<const Menu> mainMenu();

}  // namespace platform
