#pragma once

#include "platform/input/HotKeyService.h"

#include <memory>
#include <vector>
#include <xkbcommon/xkbcommon.h>

struct xcb_connection_t;

namespace platform {

struct ReleaseXkb {
  void operator()(xkb_context* context) const { xkb_context_unref(context); }
  void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
  void operator()(xkb_state* state) const { xkb_state_unref(state); }
};
using XkbContext = std::unique_ptr<xkb_context, ReleaseXkb>;
using XkbKeymap = std::unique_ptr<xkb_keymap, ReleaseXkb>;
using XkbState = std::unique_ptr<xkb_state, ReleaseXkb>;

/// The keymap of an X server as it is now; null where the server can't tell.
[[nodiscard]] XkbKeymap readX11Keymap(xcb_connection_t* connection);

/// The layout that an X server's keyboard is switched to, of that keymap; the first where it can't tell.
[[nodiscard]] xkb_layout_index_t currentX11Layout(xcb_connection_t* connection, xkb_keymap* keymap);

/// The combinations of two modifiers and more that can't be held together, in whatever order their left keys
/// are pressed, because one of the keys does something else while another is down.
[[nodiscard]] std::vector<HotKeyModifiers> modifiersThatSwitchLayout(xkb_keymap* keymap);

}  // namespace platform
