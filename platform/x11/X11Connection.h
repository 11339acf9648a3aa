#pragma once

#include "platform/system/Xcb.h"

#include <string_view>

namespace platform {

/// The application's own connection to its X server; nullptr if it has none.
xcb_connection_t* x11Connection();

/// Whether some program owns the selection of that name; false without an X server.
[[nodiscard]] bool isX11SelectionOwned(std::string_view name);

}  // namespace platform
