#include "tools/screencapture/x11/Display.h"

namespace screencapture {

std::optional<Display> Display::open() {
  int number = 0;
  platform::XcbConnection connection(xcb_connect(nullptr, &number));
  if (xcb_connection_has_error(connection.get()))
    return std::nullopt;
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
  for (; number > 0 && screens.rem > 1; --number)
    xcb_screen_next(&screens);
  if (screens.rem == 0)
    return std::nullopt;
  return Display(std::move(connection), screens.data);
}

bool Display::has(xcb_extension_t& extension) const {
  const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection(), &extension);
  return data && data->present;
}

xcb_intern_atom_cookie_t Display::askForAtom(std::string_view name) const {
  return platform::askForAtom(connection(), name);
}

xcb_atom_t Display::atom(xcb_intern_atom_cookie_t asked) const {
  return platform::atomFrom(connection(), asked);
}

}  // namespace screencapture
