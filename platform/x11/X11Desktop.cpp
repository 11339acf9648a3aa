#include "platform/x11/X11Desktop.h"

#include "platform/x11/X11Connection.h"

#include <algorithm>

namespace platform {
namespace {

const xcb_screen_t* rootScreen(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

xcb_get_property_cookie_t askForNumbers(xcb_connection_t* connection, xcb_window_t window,
                                        xcb_atom_t property) {
  constexpr uint32_t most = 4096;
  return xcb_get_property(connection, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, most);
}

/// Empty also where the window is gone.
std::vector<uint32_t> numbers(xcb_connection_t* connection, xcb_get_property_cookie_t cookie) {
  const auto reply = xcbReply(connection, xcb_get_property_reply, cookie);
  if (!reply || reply->format != 32)
    return {};
  const auto* const first = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

}  // namespace

std::vector<X11Bar> x11Bars() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return {};
  const xcb_atom_t strut = x11Atom(connection, "_NET_WM_STRUT_PARTIAL");
  const xcb_atom_t olderStrut = x11Atom(connection, "_NET_WM_STRUT");
  const auto windows = numbers(connection, askForNumbers(connection, rootScreen(connection)->root,
                                                         x11Atom(connection, "_NET_CLIENT_LIST")));
  // All questions go out before the first answer is waited for.
  struct Asked {
    xcb_window_t window;
    xcb_get_property_cookie_t strut;
    xcb_get_property_cookie_t olderStrut;
  };
  std::vector<Asked> asked;
  for (const xcb_window_t window : windows)
    asked.push_back(
        {window, askForNumbers(connection, window, strut), askForNumbers(connection, window, olderStrut)});
  std::vector<X11Bar> bars;
  for (const Asked& each : asked) {
    std::vector<uint32_t> depths = numbers(connection, each.strut);
    const std::vector<uint32_t> older = numbers(connection, each.olderStrut);
    if (depths.size() < 4)
      depths = older;
    if (depths.size() < 4 ||
        std::all_of(depths.begin(), depths.begin() + 4, [](auto depth) { return !depth; }))
      continue;
    if (const auto frame = x11FrameOf(each.window))
      bars.push_back({*frame, QMargins(static_cast<int>(depths[0]), static_cast<int>(depths[2]),
                                       static_cast<int>(depths[1]), static_cast<int>(depths[3]))});
  }
  return bars;
}

std::optional<QRect> x11ActiveWindow() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return std::nullopt;
  const auto window = numbers(connection, askForNumbers(connection, rootScreen(connection)->root,
                                                        x11Atom(connection, "_NET_ACTIVE_WINDOW")));
  return window.empty() || !window[0] ? std::nullopt : x11FrameOf(window[0]);
}

std::optional<QRect> x11FrameOf(quint32 window) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return std::nullopt;
  const auto geometryCookie = xcb_get_geometry(connection, window);
  const auto originCookie = xcb_translate_coordinates(connection, window, rootScreen(connection)->root, 0, 0);
  const auto geometry = xcbReply(connection, xcb_get_geometry_reply, geometryCookie);
  const auto origin = xcbReply(connection, xcb_translate_coordinates_reply, originCookie);
  if (!geometry || !origin)
    return std::nullopt;
  return QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
}

QSize x11RootSize() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return {};
  const auto reply =
      xcbAsk(connection, xcb_get_geometry, xcb_get_geometry_reply, rootScreen(connection)->root);
  return reply ? QSize(reply->width, reply->height) : QSize();
}

}  // namespace platform
