#include "tools/screencapture/x11/WindowList.h"

#include <algorithm>
#include <array>

namespace screencapture {

namespace {

/// A child of the root window.
struct TopLevel {
  Rectangle frame;
  bool isManaged = false;  // it holds a window that a window manager looks after
};

/// A window somewhere below a child of the root.
struct Inner {
  xcb_window_t window;
  std::size_t topLevel;  // index of that child
};

struct Atoms {
  xcb_atom_t state = XCB_ATOM_NONE;         // a window manager marks each window of a program with it
  xcb_atom_t frameExtents = XCB_ATOM_NONE;  // left, right, top and bottom of a shadow's margin
};

std::vector<xcb_window_t> children(const xcb_query_tree_reply_t* tree) {
  if (!tree)
    return {};
  const xcb_window_t* first = xcb_query_tree_children(tree);
  return {first, first + xcb_query_tree_children_length(tree)};
}

/// Sends one request for each of `windows`, then collects the answers in the same order.
template <typename T, typename Send, typename Cookie>
std::vector<Reply<T>> askAll(const Display& display, const std::vector<Inner>& windows, Send send,
                             T* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**)) {
  std::vector<Cookie> cookies;
  for (const Inner& each : windows)
    cookies.push_back(send(each.window));
  std::vector<Reply<T>> replies;
  for (const Cookie cookie : cookies)
    replies.push_back(reply(display, wait, cookie));
  return replies;
}

void cutMargin(Rectangle& frame, const xcb_get_property_reply_t* extents) {
  if (!extents || extents->format != 32 || extents->value_len != 4)
    return;
  const auto* value = static_cast<const std::uint32_t*>(xcb_get_property_value(extents));
  const auto limit = static_cast<std::uint32_t>(std::max(frame.width, frame.height));
  std::array<int, 4> margin{};
  std::transform(value, value + 4, margin.begin(),
                 [limit](std::uint32_t side) { return static_cast<int>(std::min(side, limit)); });
  const auto [left, right, top, bottom] = margin;
  frame = {frame.x + left, frame.y + top, frame.width - left - right, frame.height - top - bottom};
}

/// Looks for managed windows level by level; a level costs one turn of the server, whatever its size.
void findManaged(const Display& display, const Atoms& atoms, std::vector<TopLevel>& topLevels,
                 std::vector<Inner> level) {
  xcb_connection_t* const connection = display.connection();
  while (!level.empty()) {
    std::vector<xcb_query_tree_cookie_t> trees;
    std::vector<xcb_get_property_cookie_t> extents;
    for (const Inner& each : level) {
      trees.push_back(xcb_query_tree(connection, each.window));
      extents.push_back(
          xcb_get_property(connection, 0, each.window, atoms.frameExtents, XCB_ATOM_CARDINAL, 0, 4));
    }
    const auto states = askAll(
        display, level,
        [&](xcb_window_t window) {
          return xcb_get_property(connection, 0, window, atoms.state, XCB_ATOM_ANY, 0, 0);
        },
        xcb_get_property_reply);
    std::vector<Inner> next;
    for (std::size_t i = 0; i < level.size(); ++i) {
      const auto tree = reply(display, xcb_query_tree_reply, trees[i]);
      const auto margin = reply(display, xcb_get_property_reply, extents[i]);
      TopLevel& top = topLevels[level[i].topLevel];
      if (states[i] && states[i]->type != XCB_ATOM_NONE) {
        top.isManaged = true;
        cutMargin(top.frame, margin.get());
      } else {
        for (const xcb_window_t child : children(tree.get()))
          next.push_back({child, level[i].topLevel});
      }
    }
    std::erase_if(next, [&](const Inner& each) { return topLevels[each.topLevel].isManaged; });
    level = std::move(next);
  }
}

}  // namespace

std::vector<Rectangle> shownWindows(const Display& display) {
  xcb_connection_t* const connection = display.connection();
  const auto state = display.askForAtom("WM_STATE"), frameExtents = display.askForAtom("_GTK_FRAME_EXTENTS");
  const auto rootAttributes = xcb_get_window_attributes(connection, display.root());
  const auto tree = reply(display, xcb_query_tree_reply, xcb_query_tree(connection, display.root()));
  const Atoms atoms{display.atom(state), display.atom(frameExtents)};
  const auto root = reply(display, xcb_get_window_attributes_reply, rootAttributes);
  const bool hasManager = root && (root->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);

  std::vector<Inner> all;
  for (const xcb_window_t window : children(tree.get()))
    all.push_back({window, 0});
  std::ranges::reverse(all);  // the server names the lowest first
  std::vector<xcb_get_geometry_cookie_t> geometries;
  for (const Inner& each : all)
    geometries.push_back(xcb_get_geometry(connection, each.window));
  const auto attributes = askAll(
      display, all, [&](xcb_window_t window) { return xcb_get_window_attributes(connection, window); },
      xcb_get_window_attributes_reply);

  std::vector<TopLevel> topLevels;
  std::vector<Inner> shown;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto geometry = reply(display, xcb_get_geometry_reply, geometries[i]);
    const auto& window = attributes[i];
    if (!geometry || !window || window->map_state != XCB_MAP_STATE_VIEWABLE ||
        window->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT || (!hasManager && window->override_redirect))
      continue;
    const int border = 2 * geometry->border_width;
    shown.push_back({all[i].window, topLevels.size()});
    topLevels.push_back(
        {{geometry->x, geometry->y, geometry->width + border, geometry->height + border}, !hasManager});
  }
  if (hasManager)
    findManaged(display, atoms, topLevels, shown);

  std::vector<Rectangle> frames;
  for (const TopLevel& each : topLevels) {
    const Rectangle visible = each.frame.intersected({0, 0, display.size().width, display.size().height});
    if (each.isManaged && !visible.isEmpty())
      frames.push_back(visible);
  }
  return frames;
}

}  // namespace screencapture
