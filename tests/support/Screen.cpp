#include "tests/support/Screen.h"

#include "platform/input/XcbXkb.h"
#include "platform/system/Xcb.h"
#include "tests/support/Waiting.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <cstring>
#include <random>
#include <stdexcept>
#include <xcb/randr.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace testing_support {
namespace {

using platform::XcbPointer;

xcb_keycode_t keycode(int evdevCode) {
  return static_cast<xcb_keycode_t>(evdevCode + platform::x11KeycodeOffset);
}

}  // namespace

Screen::Screen(const std::string& name) : display(name), connection(xcb_connect(name.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection)) {
    xcb_disconnect(connection);
    throw std::runtime_error("no display " + name);
  }
  screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
  roundTrip();
}

Screen::~Screen() {
  xcb_disconnect(connection);
}

void Screen::roundTrip() const {
  (void)platform::xcbAsk(connection, xcb_get_input_focus, xcb_get_input_focus_reply);
}

QSize Screen::size() const {
  return {screen->width_in_pixels, screen->height_in_pixels};
}

QImage Screen::picture() const {
  const auto reply =
      platform::xcbAsk(connection, xcb_get_image, xcb_get_image_reply, XCB_IMAGE_FORMAT_Z_PIXMAP,
                       screen->root, 0, 0, screen->width_in_pixels, screen->height_in_pixels, ~0U);
  if (!reply)
    throw std::runtime_error("the screen can't be read");
  const QImage::Format format = reply->depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32;
  const int stride = xcb_get_image_data_length(reply.get()) / size().height();
  return QImage(xcb_get_image_data(reply.get()), size().width(), size().height(), stride, format)
      .convertToFormat(QImage::Format_RGB32)
      .copy();
}

QImage Screen::settledPicture() const {
  QImage last = picture();
  QElapsedTimer unchanged;
  unchanged.start();
  until("the screen stands still", [&] {
    QImage now = picture();
    if (now != last) {
      last = std::move(now);
      unchanged.restart();
    }
    return unchanged.hasExpired(100);
  });
  return last;
}

QImage Screen::settledPictureAfter(const std::function<void()>& gesture) const {
  const QImage before = settledPicture();
  gesture();
  until("the gesture shows", [&] { return picture() != before; });
  return settledPicture();
}

quint32 Screen::atom(const char* name) const {
  return platform::xcbAsk(connection, xcb_intern_atom, xcb_intern_atom_reply, 0,
                          static_cast<uint16_t>(std::strlen(name)), name)
      ->atom;
}

QByteArray Screen::property(quint32 window, const char* name) const {
  const auto reply = platform::xcbAsk(connection, xcb_get_property, xcb_get_property_reply, 0, window,
                                      atom(name), XCB_ATOM_ANY, 0, 1024);
  if (!reply)
    return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          xcb_get_property_value_length(reply.get())};
}

quint32 Screen::root() const {
  return screen->root;
}

bool Screen::hasProperty(quint32 window, const char* name) const {
  return !property(window, name).isEmpty();
}

bool Screen::isListed(quint32 window, const char* list, const char* name) const {
  const QByteArray names = property(window, list);
  const quint32 wanted = atom(name);
  for (qsizetype at = 0; at + 4 <= names.size(); at += 4)
    if (std::memcmp(names.constData() + at, &wanted, 4) == 0)
      return true;
  return false;
}

void Screen::collect(quint32 window, QPoint origin, std::vector<ScreenWindow>& found) const {
  const auto tree = platform::xcbAsk(connection, xcb_query_tree, xcb_query_tree_reply, window);
  if (!tree)  // gone meanwhile
    return;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    const xcb_window_t child = children[i];
    const auto attributes =
        platform::xcbAsk(connection, xcb_get_window_attributes, xcb_get_window_attributes_reply, child);
    const auto geometry = platform::xcbAsk(connection, xcb_get_geometry, xcb_get_geometry_reply, child);
    if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
      continue;
    const QPoint corner =
        origin + QPoint(geometry->x + geometry->border_width, geometry->y + geometry->border_width);
    found.push_back({child, QString::fromUtf8(property(child, "WM_NAME")),
                     QString::fromUtf8(property(child, "WM_CLASS").replace('\0', ' ')).trimmed(),
                     QRect(corner, QSize(geometry->width, geometry->height))});
    collect(child, corner, found);
  }
}

std::vector<ScreenWindow> Screen::windows() const {
  std::vector<ScreenWindow> found;
  collect(screen->root, {}, found);
  return found;
}

std::optional<ScreenWindow> Screen::find(const QString& text) const {
  const std::vector<ScreenWindow> all = windows();
  const auto match = std::find_if(all.rbegin(), all.rend(), [&](const ScreenWindow& window) {
    return window.title.contains(text) || window.className.contains(text);
  });
  return match == all.rend() ? std::nullopt : std::optional(*match);
}

quint32 Screen::keyboardWindow() const {
  return platform::xcbAsk(connection, xcb_get_input_focus, xcb_get_input_focus_reply)->focus;
}

bool Screen::isSelectionOwned(const char* name) const {
  const auto owner =
      platform::xcbAsk(connection, xcb_get_selection_owner, xcb_get_selection_owner_reply, atom(name));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

void Screen::takeSelection(const char* name) {
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(connection, window, atom(name), XCB_CURRENT_TIME);
  roundTrip();
}

bool Screen::holdsSelection(const char* name) const {
  const auto owner =
      platform::xcbAsk(connection, xcb_get_selection_owner, xcb_get_selection_owner_reply, atom(name));
  const xcb_setup_t* const setup = xcb_get_setup(connection);
  return (owner->owner & ~setup->resource_id_mask) == setup->resource_id_base;
}

void Screen::giveKeyboard(quint32 window) {
  xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
  roundTrip();
}

quint32 Screen::activeWindow() const {
  const QByteArray value = property(screen->root, "_NET_ACTIVE_WINDOW");
  quint32 window = 0;
  memcpy(&window, value.constData(), std::min(sizeof window, size_t(value.size())));
  return window;
}

quint32 Screen::pixmapOf(const QImage& picture) {
  const QImage image =
      picture.convertToFormat(screen->root_depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
  const auto width = static_cast<uint16_t>(image.width());
  const xcb_pixmap_t pixmap = xcb_generate_id(connection);
  xcb_create_pixmap(connection, screen->root_depth, pixmap, screen->root, width,
                    static_cast<uint16_t>(image.height()));
  const xcb_gcontext_t context = xcb_generate_id(connection);
  xcb_create_gc(connection, context, pixmap, 0, nullptr);
  // A row at a time, since a request has a greatest length.
  for (int y = 0; y < image.height(); ++y)
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, 1, 0,
                  static_cast<int16_t>(y), 0, screen->root_depth, static_cast<uint32_t>(image.bytesPerLine()),
                  image.constScanLine(y));
  xcb_free_gc(connection, context);
  return pixmap;
}

void Screen::paintRoot(const QImage& picture) {
  const xcb_pixmap_t pixmap = pixmapOf(picture);
  xcb_change_window_attributes(connection, screen->root, XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(connection, 0, screen->root, 0, 0, 0, 0);
  // What a compositing manager, or a panel that lets the background through, takes for it.
  for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"})
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, screen->root, atom(name), XCB_ATOM_PIXMAP, 32, 1,
                        &pixmap);
  roundTrip();
}

quint32 Screen::openWindow(const QString& title, QPoint position, const QImage& picture, WindowKind kind) {
  // Clicks are its own too: else they would be clicks on the desktop.
  const uint32_t values[] = {pixmapOf(picture), kind == WindowKind::Menu,
                             XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_BUTTON_PRESS};
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root,
                    static_cast<int16_t>(position.x()), static_cast<int16_t>(position.y()),
                    static_cast<uint16_t>(picture.width()), static_cast<uint16_t>(picture.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  const QByteArray name = title.toUtf8();
  for (const auto& [property, type] : {std::pair(quint32(XCB_ATOM_WM_NAME), quint32(XCB_ATOM_STRING)),
                                       std::pair(atom("_NET_WM_NAME"), atom("UTF8_STRING"))})
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<uint32_t>(name.size()), name.constData());
  // The position is the user's and counts for the contents (static gravity).
  std::vector<quint32> hints(18);
  hints[0] = 1U | 1U << 9;
  hints[17] = XCB_GRAVITY_STATIC;
  setProperty(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
  if (kind == WindowKind::Bar) {
    setProperty(window, "_NET_WM_WINDOW_TYPE", "ATOM", {atom("_NET_WM_WINDOW_TYPE_DOCK")});
    setProperty(window, "_NET_WM_STRUT", "CARDINAL", {0, 0, static_cast<quint32>(picture.height()), 0});
  }
  xcb_map_window(connection, window);
  xcb_flush(connection);
  until("the window '" + title.toStdString() + "' is in its place", [&] {
    return std::ranges::any_of(windows(), [&](const ScreenWindow& each) {
      return each.id == window && each.area == QRect(position, picture.size());
    });
  });
  return window;
}

void Screen::closeWindow(quint32 window) {
  xcb_destroy_window(connection, window);
  roundTrip();
}

void Screen::askToClose(quint32 window) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom("_NET_CLOSE_WINDOW");
  xcb_send_event(connection, 0, screen->root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  roundTrip();
}

void Screen::setProperty(quint32 window, const char* name, const char* type,
                         const std::vector<quint32>& values) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 32,
                      static_cast<uint32_t>(values.size()), values.data());
  roundTrip();
}

QRect Screen::frameOf(quint32 window) const {
  const std::vector<ScreenWindow> all = windows();
  const auto own = std::ranges::find(all, window, &ScreenWindow::id);
  const auto frame = std::ranges::find_if(
      all, [&](const ScreenWindow& each) { return own != all.end() && each.area.contains(own->area); });
  return frame == all.end() ? QRect() : frame->area;
}

void Screen::setMonitors(const std::vector<QRect>& monitors) {
  const auto resources = platform::xcbAsk(connection, xcb_randr_get_screen_resources_current,
                                          xcb_randr_get_screen_resources_current_reply, screen->root);
  for (std::size_t i = 0; i < monitors.size(); ++i) {
    struct {
      xcb_randr_set_monitor_request_t request;
      xcb_randr_monitor_info_t info;
      xcb_randr_output_t output;
    } message{};
    message.request.window = screen->root;
    message.info.name = atom(("monitor" + std::to_string(i)).c_str());
    message.info.primary = i == 0;
    message.info.nOutput = i == 0;  // the server has a single output: it goes to the first
    message.info.x = static_cast<int16_t>(monitors[i].x());
    message.info.y = static_cast<int16_t>(monitors[i].y());
    message.info.width = static_cast<uint16_t>(monitors[i].width());
    message.info.height = static_cast<uint16_t>(monitors[i].height());
    message.output = xcb_randr_get_screen_resources_current_outputs(resources.get())[0];
    // Not xcb_randr_set_monitor(): libxcb 1.15 sends a part there that it never fills in.
    const xcb_protocol_request_t protocol{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    const std::size_t length = sizeof message - (message.info.nOutput ? 0 : sizeof message.output);
    iovec parts[] = {{}, {}, {&message, length}};  // the first two are for libxcb's use
    const unsigned sequence = xcb_send_request(connection, XCB_REQUEST_CHECKED, parts + 2, &protocol);
    if (const XcbPointer<xcb_generic_error_t> error{xcb_request_check(connection, {sequence})})
      throw std::runtime_error("the screen can't be split into monitors");
  }
}

bool Screen::grabKey(int evdevCode, int modifiers) {
  const auto cookie = xcb_grab_key_checked(connection, 0, screen->root, static_cast<uint16_t>(modifiers),
                                           keycode(evdevCode), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  return !XcbPointer<xcb_generic_error_t>(xcb_request_check(connection, cookie));
}

bool Screen::isKeyGrabbed(int evdevCode, int modifiers) const {
  // Another client, so that what this one has isn't lost.
  Screen probe(display);
  xcb_grab_server(probe.connection);  // nobody else may come by while the key is tried
  return !probe.grabKey(evdevCode, modifiers);
}

bool Screen::grabKeyboard() {
  const auto reply =
      platform::xcbAsk(connection, xcb_grab_keyboard, xcb_grab_keyboard_reply, false, screen->root,
                       XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void Screen::ungrabKeyboard() {
  xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
  roundTrip();
}

bool Screen::isKeyboardGrabbed() const {
  Screen probe(display);
  xcb_grab_server(probe.connection);
  return !probe.grabKeyboard();
}

bool Screen::isPointerGrabbed() const {
  Screen probe(display);
  xcb_grab_server(probe.connection);
  const auto cookie = xcb_grab_pointer(probe.connection, 0, screen->root, 0, XCB_GRAB_MODE_ASYNC,
                                       XCB_GRAB_MODE_ASYNC, 0, 0, XCB_CURRENT_TIME);
  const auto reply = platform::xcbReply(probe.connection, xcb_grab_pointer_reply, cookie);
  return !reply || reply->status != XCB_GRAB_STATUS_SUCCESS;
}

int Screen::modifiers() const {
  const auto pointer = platform::xcbAsk(connection, xcb_query_pointer, xcb_query_pointer_reply, screen->root);
  return pointer->mask & 0xFF;
}

void Screen::lockGroup(int group) {
  xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, static_cast<uint8_t>(group), 0, 0,
                           0);
  roundTrip();
}

void Screen::exchangeModifiers(size_t one, size_t other) {
  const auto map = platform::xcbAsk(connection, xcb_get_modifier_mapping, xcb_get_modifier_mapping_reply);
  const size_t width = map->keycodes_per_modifier;
  xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(map.get());
  std::swap_ranges(keycodes + one * width, keycodes + (one + 1) * width, keycodes + other * width);
  const auto cookie = xcb_set_modifier_mapping(connection, static_cast<uint8_t>(width), keycodes);
  if (platform::xcbReply(connection, xcb_set_modifier_mapping_reply, cookie)->status !=
      XCB_MAPPING_STATUS_SUCCESS)
    throw std::runtime_error("the modifiers can't be exchanged");
}

std::vector<int> Screen::takeKeyPresses() {
  std::vector<int> pressed;
  while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
    if ((event->response_type & 0x7F) == XCB_KEY_PRESS)
      pressed.push_back(reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail);
  }
  return pressed;
}

QImage randomPicture(QSize size, unsigned seed) {
  std::mt19937 random(seed);
  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
    std::generate_n(row, size.width(), [&] { return 0xFF000000U | random(); });
  }
  return picture;
}

}  // namespace testing_support
