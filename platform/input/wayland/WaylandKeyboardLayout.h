#pragma once

#include "platform/input/KeyboardLayout.h"

namespace platform {

/// The keymap that the compositor gives every program.
class WaylandKeyboardLayout : public KeyboardLayout {
 public:
  std::optional<Translation> translate(quint16 keyCode) const override;
};

}  // namespace platform
