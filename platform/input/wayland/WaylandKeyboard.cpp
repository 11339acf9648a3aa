#include "platform/input/wayland/WaylandKeyboard.h"

#include "platform/base/Environment.h"
#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandConnection.h"

#include <sys/mman.h>

namespace platform {
namespace {

constexpr uint32_t newestSeat = 5;  // which can be released

WaylandKeyboard& of(void* data) {
  return *static_cast<WaylandKeyboard*>(data);
}

void ignoreName(void*, wl_seat*, const char*) {
}
void ignoreEnter(void*, wl_keyboard*, uint32_t, wl_surface*, wl_array*) {
}
void ignoreLeave(void*, wl_keyboard*, uint32_t, wl_surface*) {
}
void ignoreKey(void*, wl_keyboard*, uint32_t, uint32_t, uint32_t, uint32_t) {
}
void ignoreRepeat(void*, wl_keyboard*, int32_t, int32_t) {
}

}  // namespace

const wl_seat_listener WaylandKeyboard::seatListener{
    [](void* data, wl_seat*, uint32_t capabilities) { of(data).setCapabilities(capabilities); }, ignoreName};

const wl_keyboard_listener WaylandKeyboard::keyboardListener{
    [](void* data, wl_keyboard*, uint32_t format, int32_t file, uint32_t size) {
      of(data).setKeymap(format, file, size);
    },
    ignoreEnter,
    ignoreLeave,
    ignoreKey,
    [](void* data, wl_keyboard*, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t group) {
      of(data).layout = group;
    },
    ignoreRepeat};

WaylandKeyboard* WaylandKeyboard::current() {
  return Environment::shared<WaylandKeyboard>([]() -> std::shared_ptr<WaylandKeyboard> {
           const WaylandGlobals* const globals = waylandGlobals();
           return globals ? std::make_shared<WaylandKeyboard>(waylandDisplay(), *globals) : nullptr;
         })
      .get();
}

WaylandKeyboard::WaylandKeyboard(wl_display* display, const WaylandGlobals& globals)
    : seat(globals.bind<wl_seat>(wl_seat_interface, newestSeat), {wl_seat_release}) {
  if (!seat)
    return;
  // The first answers are waited for on a queue of their own, so that nobody else's events are handled
  // meanwhile; the further ones come with the toolkit's.
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(display), {wl_event_queue_destroy});
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(seat.get()), queue.get());
  wl_seat_add_listener(seat.get(), &seatListener, this);
  wl_display_roundtrip_queue(display, queue.get());  // what the seat has
  wl_display_roundtrip_queue(display, queue.get());  // its keyboard's keymap
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(seat.get()), nullptr);
  if (keyboard)
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(keyboard.get()), nullptr);
  wl_display_dispatch_queue_pending(display, queue.get());
}

WaylandKeyboard::~WaylandKeyboard() = default;

Keyboard WaylandKeyboard::read() const {
  if (!keymap && !keymapText.isEmpty()) {
    const XkbContext context(xkb_context_new(
        static_cast<xkb_context_flags>(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
    if (context)
      keymap = XkbKeymap(xkb_keymap_new_from_buffer(context.get(), keymapText.constData(),
                                                    static_cast<size_t>(keymapText.size()),
                                                    XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
  }
  return {XkbKeymap(keymap ? xkb_keymap_ref(keymap.get()) : nullptr), layout};
}

void WaylandKeyboard::setCapabilities(uint32_t capabilities) {
  const bool hasKeyboard = capabilities & WL_SEAT_CAPABILITY_KEYBOARD;
  if (hasKeyboard == bool(keyboard))
    return;
  keyboard = WaylandObject<wl_keyboard>(hasKeyboard ? wl_seat_get_keyboard(seat.get()) : nullptr,
                                        {wl_keyboard_release});
  if (keyboard)
    wl_keyboard_add_listener(keyboard.get(), &keyboardListener, this);
}

void WaylandKeyboard::setKeymap(uint32_t format, int file, uint32_t size) {
  const Descriptor owned(file);
  if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 || size == 0)
    return;
  void* const memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (memory == MAP_FAILED)
    return;
  // It ends with a zero byte, for those who want one.
  QByteArray text = QByteArray(static_cast<const char*>(memory), size).constData();
  munmap(memory, size);
  if (text == keymapText)
    return;
  keymapText = std::move(text);
  keymap.reset();
  layout = 0;
  observers.tell();
}

}  // namespace platform
