#pragma once

#include "platform/system/Descriptor.h"
#include "tools/screencapture/selection/Gestures.h"

#include <cstdint>
#include <memory>

struct xkb_keymap;

namespace screencapture::wayland {

/// What the keys mean, by the compositor's description of them.
class Keyboard {
 public:
  Keyboard();
  ~Keyboard();
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  /// Takes the description, a text in a file. It is read when a key is asked for: that takes longer than all
  /// that leads to the first picture.
  void describe(platform::Descriptor file);

  /// What a key means without modifiers, by its code in X11's counting.
  [[nodiscard]] Key keyOf(std::uint32_t code);

 private:
  struct End {
    void operator()(xkb_keymap* keymap) const;
  };
  void read();

  platform::Descriptor description;
  std::unique_ptr<xkb_keymap, End> keymap;
};

}  // namespace screencapture::wayland
