// What the capture tool's start is measured against: the least that freezes the screen and takes the input.
// It copies the screen inside the X server into its window's background, and waits to be ended.

#include <cstdint>
#include <xcb/xcb.h>

int main() {
  xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection))
    return 1;
  const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const std::uint16_t width = screen.width_in_pixels, height = screen.height_in_pixels;

  const xcb_pixmap_t picture = xcb_generate_id(connection);
  const xcb_gcontext_t copying = xcb_generate_id(connection);
  const std::uint32_t withWindows = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
  xcb_create_pixmap(connection, screen.root_depth, picture, screen.root, width, height);
  xcb_create_gc(connection, copying, screen.root, XCB_GC_SUBWINDOW_MODE, &withWindows);
  xcb_copy_area(connection, screen.root, picture, copying, 0, 0, 0, 0, width, height);

  const auto pointer = xcb_grab_pointer(connection, 0, screen.root, XCB_EVENT_MASK_BUTTON_PRESS,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, 0);
  const auto keyboard = xcb_grab_keyboard(connection, 0, screen.root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {picture, 1};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen.root, 0, 0, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
  xcb_map_window(connection, window);
  const bool hasInput =
      xcb_grab_pointer_reply(connection, pointer, nullptr)->status == XCB_GRAB_STATUS_SUCCESS &&
      xcb_grab_keyboard_reply(connection, keyboard, nullptr)->status == XCB_GRAB_STATUS_SUCCESS;
  while (hasInput && xcb_wait_for_event(connection)) {
  }
  return 1;
}
