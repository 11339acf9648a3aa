#include "tests/tools/screencapture/Bystander.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <random>
#include <stdexcept>
#include <sys/uio.h>
#include <unistd.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

using namespace screencapture;

namespace {

constexpr std::chrono::seconds patience{20};
constexpr unsigned glanceMicroseconds = 2000;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

template <typename Condition>
void waitUntil(Condition condition, const char* what) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end)
      throw std::runtime_error(std::string("waited in vain for ") + what);
    usleep(glanceMicroseconds);
  }
}

}  // namespace

Picture Picture::random(int width, int height, std::uint32_t pixelMask, unsigned seed) {
  std::mt19937 random(seed);
  Picture picture{width, height, {}};
  for (int i = 0; i < width * height; ++i)
    picture.pixels.push_back(static_cast<std::uint32_t>(random()) & pixelMask);
  return picture;
}

Bystander::Bystander(const std::string& display) : connection(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection))
    throw std::runtime_error("no display");
  screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection, screen->root, XCB_CW_EVENT_MASK, &events);
  sync();
}

Bystander::~Bystander() {
  xcb_disconnect(connection);
}

void Bystander::paintDesktop(const Picture& picture) {
  const xcb_pixmap_t pixmap = upload(picture);
  xcb_change_window_attributes(connection, screen->root, XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(connection, 0, screen->root, 0, 0, 0, 0);
  sync();
}

xcb_window_t Bystander::openWindow(const Rectangle& place, const Picture& picture, bool overrideRedirect) {
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {upload(picture), overrideRedirect};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root,
                    static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                    static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
  // The size hints' flag for a position that the user chose, so that a window manager leaves it.
  std::vector<std::uint32_t> hints(18);
  hints[0] = 1;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                      XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints.data());
  xcb_map_window(connection, window);
  sync();
  return window;
}

void Bystander::setProperty(xcb_window_t window, const char* name, const char* type,
                            const std::vector<std::uint32_t>& values) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
  sync();
}

void Bystander::closeWindow(xcb_window_t window) {
  xcb_destroy_window(connection, window);
  sync();
}

Rectangle Bystander::waitForFrame(xcb_window_t window) {
  Rectangle frame;
  waitUntil(
      [&] {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
        if (!tree || tree->parent == screen->root)
          return false;
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, window), nullptr));
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, tree->parent), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !geometry)
          return false;
        const int border = 2 * geometry->border_width;
        frame = {geometry->x, geometry->y, geometry->width + border, geometry->height + border};
        return true;
      },
      "a window's frame");
  return frame;
}

void Bystander::splitIntoMonitors(int leftWidth) {
  const auto add = [&](const char* name, int x, int width) {
    // The library's own function for this request reads beyond its argument, so the bytes are put together
    // here.
    xcb_randr_set_monitor_request_t head{};
    head.window = screen->root;
    xcb_randr_monitor_info_t monitor{};
    monitor.name = atom(name);
    monitor.x = static_cast<std::int16_t>(x);
    monitor.width = static_cast<std::uint16_t>(width);
    monitor.height = screen->height_in_pixels;
    const xcb_protocol_request_t request{2, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    // The two places before the parts belong to the library.
    std::array<iovec, 4> parts{};
    parts[2] = {&head, sizeof head};
    parts[3] = {&monitor, sizeof monitor};
    xcb_send_request(connection, 0, &parts[2], &request);
  };
  add("left", 0, leftWidth);
  add("right", leftWidth, screen->width_in_pixels - leftWidth);
  sync();
  const Reply<xcb_randr_get_monitors_reply_t> monitors(
      xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, screen->root, 1), nullptr));
  if (!monitors || monitors->nMonitors < 2)
    throw std::runtime_error("the X server has no second monitor");
}

bool Bystander::waitForOverlay() {
  pollfd waiting{xcb_get_file_descriptor(connection), POLLIN, 0};
  do {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
      if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
        continue;
      const auto& mapped = *reinterpret_cast<const xcb_map_notify_event_t*>(event.get());
      const Reply<xcb_get_geometry_reply_t> geometry(
          xcb_get_geometry_reply(connection, xcb_get_geometry(connection, mapped.window), nullptr));
      if (mapped.override_redirect && geometry && geometry->width == screen->width_in_pixels &&
          geometry->height == screen->height_in_pixels)
        return true;
    }
  } while (poll(&waiting, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) > 0);
  return false;
}

Picture Bystander::look() {
  return look({0, 0, size().width, size().height});
}

Picture Bystander::lookWhenSettled() {
  Picture before = look();
  for (int calm = 0; calm < 4;) {
    usleep(50'000);
    Picture now = look();
    calm = now == before ? calm + 1 : 0;
    before = std::move(now);
  }
  return before;
}

void Bystander::waitForChange(int x, int y, std::uint32_t before) {
  waitUntil([&] { return look({x, y, 1, 1}).at(0, 0) != before; }, "a change on the screen");
}

bool Bystander::holdKeyboard() {
  const Reply<xcb_grab_keyboard_reply_t> answer(
      xcb_grab_keyboard_reply(connection,
                              xcb_grab_keyboard(connection, 0, screen->root, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  return answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
}

void Bystander::releaseKeyboard() {
  xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
  sync();
}

void Bystander::waitForKeyboardTaken() {
  waitUntil(
      [&] {
        const bool wasFree = holdKeyboard();
        releaseKeyboard();
        return !wasFree;
      },
      "the keyboard to be taken");
}

void Bystander::takeClipboard() {
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(connection, window, atom("CLIPBOARD"), XCB_CURRENT_TIME);
  sync();
}

Size Bystander::size() const {
  return {screen->width_in_pixels, screen->height_in_pixels};
}

xcb_atom_t Bystander::atom(const char* name) {
  const Reply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
      nullptr));
  return answer->atom;
}

xcb_pixmap_t Bystander::upload(const Picture& picture) {
  const xcb_pixmap_t pixmap = xcb_generate_id(connection);
  const xcb_gcontext_t context = xcb_generate_id(connection);
  const auto width = static_cast<std::uint16_t>(picture.width);
  xcb_create_pixmap(connection, screen->root_depth, pixmap, screen->root, width,
                    static_cast<std::uint16_t>(picture.height));
  xcb_create_gc(connection, context, pixmap, 0, nullptr);
  const std::size_t pixelBytes = screen->root_depth > 16 ? 4 : 2;
  const std::size_t stride = (width * pixelBytes + 3) / 4 * 4;
  for (int y = 0; y < picture.height; ++y) {
    std::vector<std::uint8_t> row(stride);
    for (int x = 0; x < picture.width; ++x) {
      const std::uint32_t pixel = picture.at(x, y);
      std::memcpy(&row[static_cast<std::size_t>(x) * pixelBytes], &pixel, pixelBytes);
    }
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, 1, 0,
                  static_cast<std::int16_t>(y), 0, screen->root_depth, static_cast<std::uint32_t>(stride),
                  row.data());
  }
  return pixmap;
}

Picture Bystander::look(const Rectangle& part) {
  const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
      connection,
      xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, static_cast<std::int16_t>(part.x),
                    static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
                    static_cast<std::uint16_t>(part.height), ~0U),
      nullptr));
  if (!image)
    throw std::runtime_error("the screen can't be seen");
  Picture picture{part.width, part.height, {}};
  const std::size_t pixelBytes = screen->root_depth > 16 ? 4 : 2;
  const std::size_t stride = (static_cast<std::size_t>(part.width) * pixelBytes + 3) / 4 * 4;
  for (int y = 0; y < part.height; ++y) {
    for (int x = 0; x < part.width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel,
                  xcb_get_image_data(image.get()) + static_cast<std::size_t>(y) * stride +
                      static_cast<std::size_t>(x) * pixelBytes,
                  pixelBytes);
      picture.pixels.push_back(pixel & (pixelBytes == 4 ? 0xffffffU : 0xffffU));
    }
  }
  return picture;
}

void Bystander::sync() {
  const Reply<xcb_get_input_focus_reply_t> answer(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}
