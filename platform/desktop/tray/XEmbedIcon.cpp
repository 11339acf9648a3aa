#include "platform/desktop/tray/XEmbedIcon.h"

#include "platform/desktop/Screens.h"
#include "platform/x11/X11Connection.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QStyle>
#include <QToolTip>

namespace platform {
namespace {

constexpr int preferredSide = 22;  // in points; most trays decide themselves

const xcb_screen_t* rootScreen(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

/// The kind of pixels that the tray asks for: transparent ones where it shows them.
X11Look lookFor(xcb_connection_t* connection, quint32 tray) {
  const auto reply =
      xcbAsk(connection, xcb_get_property, xcb_get_property_reply, false, tray,
             x11Atom(connection, "_NET_SYSTEM_TRAY_VISUAL"), xcb_atom_t(XCB_ATOM_VISUALID), 0, 1);
  const bool isTold = reply && reply->format == 32 && reply->value_len == 1;
  return X11Look::of(connection, isTold ? *static_cast<uint32_t*>(xcb_get_property_value(reply.get())) : 0);
}

quint32 makeColors(xcb_connection_t* connection, const X11Look& look) {
  const xcb_colormap_t colors = xcb_generate_id(connection);
  xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, rootScreen(connection)->root, look.visual);
  return colors;
}

quint32 makeWindow(xcb_connection_t* connection, const X11Look& look, quint32 colors, const QSize& size) {
  const xcb_window_t window = xcb_generate_id(connection);
  // Where pixels can't be transparent the tray's own background stands behind the icon.
  const uint32_t backgroundKind = look.hasAlpha ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP;
  const uint32_t background = look.hasAlpha ? 0 : uint32_t(XCB_BACK_PIXMAP_PARENT_RELATIVE);
  constexpr uint32_t borderPixel = 0;
  constexpr uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                              XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                              XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
  const uint32_t values[] = {background, borderPixel, events, colors};
  xcb_create_window(connection, static_cast<uint8_t>(look.depth), window, rootScreen(connection)->root, 0, 0,
                    static_cast<uint16_t>(size.width()), static_cast<uint16_t>(size.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, look.visual,
                    backgroundKind | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
  return window;
}

ModifierFlags modifierFlags(uint16_t state) {
  ModifierFlags flags;
  flags.setFlag(ModifierFlag::Shift, state & XCB_MOD_MASK_SHIFT);
  flags.setFlag(ModifierFlag::Control, state & XCB_MOD_MASK_CONTROL);
  flags.setFlag(ModifierFlag::Option, state & XCB_MOD_MASK_1);
  flags.setFlag(ModifierFlag::Command, state & XCB_MOD_MASK_4);
  return flags;
}

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace

XEmbedIcon::XEmbedIcon(quint32 tray, Handlers all)
    : handlers(std::move(all)),
      connection(x11Connection()),
      look(lookFor(connection, tray)),
      size((QSizeF(preferredSide, preferredSide) * qGuiApp->devicePixelRatio()).toSize()),
      colors(makeColors(connection, look)),
      window(makeWindow(connection, look, colors, size)),
      picture(std::make_unique<X11Picture>(connection, window, look)),
      accessible({[this] { return frame().value_or(QRectF()).toRect(); }, [this] { press(); }}) {
  qGuiApp->installNativeEventFilter(this);
  describe();
  dock(tray);
}

XEmbedIcon::~XEmbedIcon() {
  hideToolTip();
  picture.reset();
  if (!isGone)
    xcb_discard_reply(connection, xcb_destroy_window_checked(connection, window).sequence);
  xcb_free_colormap(connection, colors);
  xcb_flush(connection);
  qGuiApp->removeNativeEventFilter(this);
}

void XEmbedIcon::describe() {
  const auto set = [this](const char* name, xcb_atom_t type, uint8_t format, size_t count, const void* data) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, x11Atom(connection, name), type, format,
                        static_cast<uint32_t>(count), data);
  };
  const QByteArray name = QGuiApplication::applicationDisplayName().toUtf8();
  const QByteArray className = QCoreApplication::applicationName().toLower().toLatin1() + '\0' +
                               QCoreApplication::applicationName().toLatin1() + '\0';
  set("WM_CLASS", XCB_ATOM_STRING, 8, static_cast<size_t>(className.size()), className.constData());
  set("_NET_WM_NAME", x11Atom(connection, "UTF8_STRING"), 8, static_cast<size_t>(name.size()),
      name.constData());
  constexpr uint32_t version = 0;
  constexpr uint32_t isToBeMapped = 1;
  const uint32_t embedding[] = {version, isToBeMapped};
  set("_XEMBED_INFO", x11Atom(connection, "_XEMBED_INFO"), 32, std::size(embedding), embedding);
  // Size hints: eighteen numbers, the first of them telling which of the others count.
  uint32_t hints[18] = {1U << 4};
  hints[5] = static_cast<uint32_t>(size.width());  // the least width and height
  hints[6] = static_cast<uint32_t>(size.height());
  set("WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, 32, std::size(hints), hints);
}

void XEmbedIcon::dock(quint32 tray) {
  constexpr uint32_t requestDock = 0;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = tray;
  message.type = x11Atom(connection, "_NET_SYSTEM_TRAY_OPCODE");
  message.data.data32[0] = XCB_CURRENT_TIME;
  message.data.data32[1] = requestDock;
  message.data.data32[2] = window;
  // A tray that has gone meanwhile is TrayWatch's to notice.
  const auto sent = xcb_send_event_checked(connection, false, tray, XCB_EVENT_MASK_NO_EVENT,
                                           reinterpret_cast<const char*>(&message));
  xcb_discard_reply(connection, sent.sequence);
  xcb_flush(connection);
}

void XEmbedIcon::setImage(const Image& image) {
  icon = image.icon;
  draw();
}

void XEmbedIcon::setToolTip(const QString& text) {
  toolTip = text;
  accessible.setName(text);
}

void XEmbedIcon::draw() {
  if (!isGone)
    picture->draw(icon, size);
}

std::optional<QRectF> XEmbedIcon::frame() const {
  const auto attributes =
      xcbAsk(connection, xcb_get_window_attributes, xcb_get_window_attributes_reply, window);
  if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
    return std::nullopt;
  const auto place = x11FrameOf(window);
  if (!place)
    return std::nullopt;
  const QRectF frame = fromDevicePixels(*place);
  const bool isOnScreen = QGuiApplication::screenAt(frame.center().toPoint());
  return isOnScreen ? std::optional(frame) : std::nullopt;
}

bool XEmbedIcon::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  return eventType == "xcb_generic_event_t" && handle(*static_cast<const xcb_generic_event_t*>(message));
}

bool XEmbedIcon::handle(const xcb_generic_event_t& event) {
  const auto isComplaintAboutIcon = [this](const xcb_value_error_t& error) {
    return error.bad_value == window || error.bad_value == picture->id();
  };
  switch (event.response_type & 0x7f) {
    case 0:  // the tray may have taken the window with it at any time
      return isComplaintAboutIcon(as<xcb_value_error_t>(event));
    case XCB_EXPOSE:
      if (as<xcb_expose_event_t>(event).window != window)
        return false;
      draw();
      return true;
    case XCB_CONFIGURE_NOTIFY:
      if (as<xcb_configure_notify_event_t>(event).window != window)
        return false;
      size = QSize(as<xcb_configure_notify_event_t>(event).width,
                   as<xcb_configure_notify_event_t>(event).height);
      draw();
      return true;
    case XCB_REPARENT_NOTIFY:
      if (as<xcb_reparent_notify_event_t>(event).window != window)
        return false;
      // A tray that goes leaves its icons behind as windows of the desktop's.
      if (as<xcb_reparent_notify_event_t>(event).parent == rootScreen(connection)->root)
        xcb_unmap_window(connection, window);
      return true;
    case XCB_DESTROY_NOTIFY:
      if (as<xcb_destroy_notify_event_t>(event).window != window)
        return false;
      isGone = true;
      return true;
    default:
      return handlePointer(event);
  }
}

bool XEmbedIcon::handlePointer(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  if (type != XCB_ENTER_NOTIFY && type != XCB_LEAVE_NOTIFY && type != XCB_BUTTON_PRESS &&
      type != XCB_BUTTON_RELEASE)
    return false;
  const auto& pointer = as<xcb_button_press_event_t>(event);  // the four are alike
  if (pointer.event != window)
    return false;
  // A panel that opens slides over the icon, a menu grabs the pointer: after each a pointer that has stayed
  // where it clicked seems to arrive anew.
  const QPoint place(pointer.root_x, pointer.root_y);
  if (type == XCB_ENTER_NOTIFY && place != pressed)
    showToolTipSoon();
  else
    hideToolTip();
  if (type == XCB_BUTTON_PRESS)
    pressed = place;
  if (type == XCB_BUTTON_RELEASE && QRect({}, size).contains(pointer.event_x, pointer.event_y))
    clicked(pointer);
  return true;
}

void XEmbedIcon::clicked(const xcb_button_press_event_t& event) {
  if (event.detail != XCB_BUTTON_INDEX_1 && event.detail != XCB_BUTTON_INDEX_3)
    return;
  const auto type = event.detail == XCB_BUTTON_INDEX_1 ? EventType::LeftMouseUp : EventType::RightMouseUp;
  const QRectF place = fromDevicePixels(QRect(event.root_x, event.root_y, 1, 1));
  handlers.clicked({type, 0, modifierFlags(event.state)}, place.topLeft().toPoint());
}

void XEmbedIcon::press() {
  const QPoint place = frame().value_or(QRectF(QCursor::pos(), QSizeF())).center().toPoint();
  handlers.clicked({EventType::LeftMouseUp, 0, {}}, place);
}

void XEmbedIcon::showToolTipSoon() {
  const std::chrono::milliseconds delay(QApplication::style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
  toolTipDue = MainQueue::main().asyncAfter(delay, [this] {
    isToolTipShown = true;
    QToolTip::showText(QCursor::pos(), toolTip);
  });
}

void XEmbedIcon::hideToolTip() {
  toolTipDue.cancel();
  if (std::exchange(isToolTipShown, false))
    QToolTip::hideText();
}

}  // namespace platform
