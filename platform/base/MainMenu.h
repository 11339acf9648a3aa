#pragma once

#include "platform/base/Menu.h"

namespace platform {

/// The menu whose keys act in all windows of the program, with the modifiers as they are pressed; null where
/// the environment has none.
[[nodiscard]] std::shared_ptr<const Menu> mainMenu();

}  // namespace platform
