#include "tools/screencapture/wayland/Keyboard.h"

#include "platform/system/MappedFile.h"
#include "tools/screencapture/selection/KeySymbols.h"

#include <xkbcommon/xkbcommon.h>

namespace screencapture::wayland {

Keyboard::Keyboard() = default;
Keyboard::~Keyboard() = default;

void Keyboard::End::operator()(xkb_keymap* keymap) const {
  xkb_keymap_unref(keymap);
}

void Keyboard::describe(platform::Descriptor file) {
  description = std::move(file);
  keymap.reset();
}

Key Keyboard::keyOf(std::uint32_t code) {
  if (description.isOpen())
    read();
  if (!keymap)
    return Key::Other;
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap.get(), code, 0, 0, &symbols);
  return count == 1 ? keyOfSymbol(symbols[0]) : Key::Other;
}

void Keyboard::read() {
  const auto file = platform::MappedFile::of(description.get());
  (void)description.close();
  xkb_context* const context = file ? xkb_context_new(XKB_CONTEXT_NO_FLAGS) : nullptr;
  if (!context)
    return;
  const auto bytes = file->bytes();
  keymap.reset(xkb_keymap_new_from_buffer(context, reinterpret_cast<const char*>(bytes.data()),
                                          bytes.size() - 1,  // without the zero at its end
                                          XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
  xkb_context_unref(context);
}

}  // namespace screencapture::wayland
