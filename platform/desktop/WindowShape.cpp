#include "platform/desktop/WindowShape.h"

#include "platform/x11/X11Connection.h"

#include <QWidget>

#include <cmath>
#include <vector>
#include <xcb/shape.h>

namespace platform {
namespace {

/// The pixels whose middle lies in the rounded rectangle. The corners take a rectangle a row.
std::vector<xcb_rectangle_t> roundedRectangle(const QSize& size, double radius) {
  const auto rectangle = [&](int inset, int top, int height) {
    return xcb_rectangle_t{static_cast<qint16>(inset), static_cast<qint16>(top),
                           static_cast<quint16>(size.width() - 2 * inset), static_cast<quint16>(height)};
  };
  const int corner = std::min(static_cast<int>(std::ceil(radius)), std::min(size.width(), size.height()) / 2);
  std::vector<xcb_rectangle_t> rows;
  for (int y = 0; y < corner; ++y) {
    const double rise = radius - (y + 0.5);
    const double reach = std::sqrt(std::max(radius * radius - rise * rise, 0.0));
    const int inset = std::max(static_cast<int>(std::ceil(radius - reach - 0.5)), 0);
    rows.push_back(rectangle(inset, y, 1));
    rows.push_back(rectangle(inset, size.height() - 1 - y, 1));
  }
  rows.push_back(rectangle(0, corner, size.height() - 2 * corner));
  return rows;
}

}  // namespace

bool isComposited() {
  return isX11SelectionOwned("_NET_WM_CM_S0");
}

void cutToRoundedShape(const QWidget& window, int radius) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection || !window.internalWinId())
    return;
  const qreal scale = window.devicePixelRatioF();
  const auto rows = roundedRectangle((QSizeF(window.size()) * scale).toSize(), radius * scale);
  xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED,
                       static_cast<xcb_window_t>(window.internalWinId()), 0, 0,
                       static_cast<quint32>(rows.size()), rows.data());
}

void letPointerThrough(const QWidget& window) {
  if (xcb_connection_t* const connection = x11Connection(); connection && window.internalWinId())
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window.internalWinId()), 0, 0, 0, nullptr);
}

}  // namespace platform
