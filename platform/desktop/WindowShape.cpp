#include "platform/desktop/WindowShape.h"

#include "platform/desktop/wayland/SurfaceShape.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>
#include <xcb/shape.h>

namespace platform {
namespace {

constexpr char blurHint[] = "_KDE_NET_WM_BLUR_BEHIND_REGION";

struct X11Window {
  xcb_connection_t* connection;
  xcb_window_t id;
};

std::optional<X11Window> x11Window(const QWidget& window) {
  xcb_connection_t* const connection = x11Connection();
  // The widget's own number is stale once the toolkit has made its window anew.
  const QWindow* const handle = window.windowHandle();
  if (!connection || !handle || !handle->handle())
    return std::nullopt;
  return X11Window{connection, static_cast<xcb_window_t>(handle->winId())};
}

QRect inPixels(const QWidget& window, const QRect& area) {
  const qreal scale = window.devicePixelRatioF();
  return QRect((QPointF(area.topLeft()) * scale).toPoint(), (QSizeF(area.size()) * scale).toSize());
}

xcb_rectangle_t rectangle(const QRect& area) {
  return {static_cast<qint16>(area.x()), static_cast<qint16>(area.y()), static_cast<quint16>(area.width()),
          static_cast<quint16>(area.height())};
}

/// The pixels whose middle lies in the rounded rectangle. The corners take a rectangle a row.
std::vector<QRect> roundedRectangle(const QRect& area, double radius) {
  const int corner = std::min(static_cast<int>(std::ceil(radius)), std::min(area.width(), area.height()) / 2);
  std::vector<QRect> rows;
  for (int y = 0; y < corner; ++y) {
    const double rise = radius - (y + 0.5);
    const double reach = std::sqrt(std::max(radius * radius - rise * rise, 0.0));
    const int inset = std::max(static_cast<int>(std::ceil(radius - reach - 0.5)), 0);
    const QRect row(area.left() + inset, 0, area.width() - 2 * inset, 1);
    rows.push_back(row.translated(0, area.top() + y));
    rows.push_back(row.translated(0, area.bottom() - y));
  }
  rows.push_back(area.adjusted(0, corner, 0, -corner));
  return rows;
}

std::vector<xcb_rectangle_t> pixelsOfRounded(const QWidget& window, const QRect& area, int radius) {
  std::vector<xcb_rectangle_t> pixels;
  for (const QRect& row : roundedRectangle(inPixels(window, area), radius * window.devicePixelRatioF()))
    pixels.push_back(rectangle(row));
  return pixels;
}

}  // namespace

bool isComposited() {
  return waylandDisplay() || isX11SelectionOwned("_NET_WM_CM_S0");
}

void cutToRoundedShape(const QWidget& window, int radius) {
  cutToRoundedShape(window, window.rect(), radius);
}

void cutToRoundedShape(const QWidget& window, const QRect& area, int radius) {
  const auto x11 = x11Window(window);
  if (!x11)
    return;
  const auto rows = pixelsOfRounded(window, area, radius);
  xcb_shape_rectangles(x11->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED,
                       x11->id, 0, 0, static_cast<quint32>(rows.size()), rows.data());
}

void removeShape(const QWidget& window) {
  if (const auto x11 = x11Window(window))
    xcb_shape_mask(x11->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, x11->id, 0, 0, XCB_PIXMAP_NONE);
}

void takeClicksOnlyIn(const QWidget& window, const QRect& area) {
  if (isSurface(window))
    return setInputArea(window, {area});
  const auto x11 = x11Window(window);
  if (!x11)
    return;
  const xcb_rectangle_t inside = rectangle(inPixels(window, area));
  xcb_shape_rectangles(x11->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       x11->id, 0, 0, 1, &inside);
}

bool canBlurBehind() {
  if (canBlurBehindSurfaces())
    return true;
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return false;
  // Who blurs says so by a property of that name at the root window.
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const auto properties = xcbAsk(connection, xcb_list_properties, xcb_list_properties_reply, root);
  if (!properties)
    return false;
  const xcb_atom_t* const first = xcb_list_properties_atoms(properties.get());
  const xcb_atom_t* const end = first + xcb_list_properties_atoms_length(properties.get());
  return std::find(first, end, x11Atom(connection, blurHint)) != end;
}

void blurBehind(const QWidget& window, const QRect& area, int radius) {
  if (isSurface(window))
    return blurBehindSurface(window, roundedRectangle(area, radius));
  const auto x11 = x11Window(window);
  if (!x11)
    return;
  std::vector<quint32> numbers;
  for (const xcb_rectangle_t& row : pixelsOfRounded(window, area, radius))
    for (const int number : {int{row.x}, int{row.y}, int{row.width}, int{row.height}})
      numbers.push_back(static_cast<quint32>(number));
  xcb_change_property(x11->connection, XCB_PROP_MODE_REPLACE, x11->id, x11Atom(x11->connection, blurHint),
                      XCB_ATOM_CARDINAL, 32, static_cast<quint32>(numbers.size()), numbers.data());
}

void letPointerThrough(const QWidget& window) {
  if (isSurface(window))
    return setInputArea(window, {});
  if (const auto x11 = x11Window(window))
    xcb_shape_rectangles(x11->connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         x11->id, 0, 0, 0, nullptr);
}

}  // namespace platform
