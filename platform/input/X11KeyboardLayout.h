#pragma once

#include "platform/input/KeyboardLayout.h"

struct xcb_connection_t;

namespace platform {

/// The keymap of an X server, read whole at each call, in less than a millisecond.
class X11KeyboardLayout : public KeyboardLayout {
 public:
  /// The connection must outlive this object.
  explicit X11KeyboardLayout(xcb_connection_t* connection);

  std::optional<Translation> translate(quint16 keyCode) const override;

 private:
  xcb_connection_t* const connection;
};

}  // namespace platform
