#include "tools/screencapture/wayland/Input.h"

#include <algorithm>
#include <cmath>
#include <linux/input-event-codes.h>
#include <viewporter.h>

namespace screencapture::wayland {

namespace {

// X11 counts its keys' codes from here on, and so do the descriptions of keyboards.
constexpr std::uint32_t firstCode = 8;

constexpr std::uint32_t newestSeat = 5;

Button buttonOf(std::uint32_t button) {
  return button == BTN_LEFT ? Button::Left : button == BTN_RIGHT ? Button::Right : Button::Other;
}

Input& inputOf(void* self) {
  return *static_cast<Input*>(self);
}

}  // namespace

struct Input::Listeners {
  static constexpr wl_pointer_listener pointer{
      .enter =
          [](void* self, wl_pointer*, std::uint32_t serial, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
            inputOf(self).enter(serial, surface, wl_fixed_to_double(x), wl_fixed_to_double(y));
          },
      .leave = [](void* self, wl_pointer*, std::uint32_t, wl_surface*) { inputOf(self).under = nullptr; },
      .motion = [](void* self, wl_pointer*, std::uint32_t, wl_fixed_t x,
                   wl_fixed_t y) { inputOf(self).move(wl_fixed_to_double(x), wl_fixed_to_double(y)); },
      .button =
          [](void* self, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t button,
             std::uint32_t state) { inputOf(self).press(button, state == WL_POINTER_BUTTON_STATE_PRESSED); },
      .axis = [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {},
      .frame = [](void*, wl_pointer*) {},
      .axis_source = [](void*, wl_pointer*, std::uint32_t) {},
      .axis_stop = [](void*, wl_pointer*, std::uint32_t, std::uint32_t) {},
      .axis_discrete = [](void*, wl_pointer*, std::uint32_t, std::int32_t) {},
      .axis_value120 = [](void*, wl_pointer*, std::uint32_t, std::int32_t) {}};

  static constexpr wl_keyboard_listener keyboard{
      .keymap =
          [](void* self, wl_keyboard*, std::uint32_t format, int file, std::uint32_t) {
            platform::Descriptor description(file);
            if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
              inputOf(self).keyboard.describe(std::move(description));
          },
      .enter =
          [](void* self, wl_keyboard*, std::uint32_t, wl_surface*, wl_array* keys) {
            std::uint8_t down[32] = {};
            const auto* const codes = static_cast<const std::uint32_t*>(keys->data);
            for (std::size_t i = 0; i < keys->size / sizeof(*codes); ++i)
              if (const std::uint32_t code = codes[i] + firstCode; code < 256)
                down[code / 8] = static_cast<std::uint8_t>(down[code / 8] | 1 << code % 8);
            inputOf(self).heldKeys.startWith(down);
          },
      .leave = [](void* self, wl_keyboard*, std::uint32_t, wl_surface*) { inputOf(self).repeated.reset(); },
      .key =
          [](void* self, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t code,
             std::uint32_t state) {
            inputOf(self).key(code + firstCode, state == WL_KEYBOARD_KEY_STATE_PRESSED);
          },
      .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                      std::uint32_t) {},
      .repeat_info =
          [](void* self, wl_keyboard*, std::int32_t perSecond, std::int32_t delay) {
            inputOf(self).repeatInterval = std::chrono::milliseconds(perSecond > 0 ? 1000 / perSecond : 0);
            inputOf(self).repeatDelay = std::chrono::milliseconds(delay);
          }};

  static constexpr wl_seat_listener seat{
      [](void* self, wl_seat* seat, std::uint32_t capabilities) {
        Input& input = inputOf(self);
        if ((capabilities & WL_SEAT_CAPABILITY_POINTER) && !input.pointerDevice) {
          input.pointerDevice = {wl_seat_get_pointer(seat), {wl_pointer_release}};
          wl_pointer_add_listener(input.pointerDevice.get(), &pointer, self);
        }
        if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) && !input.keyboardDevice) {
          input.keyboardDevice = {wl_seat_get_keyboard(seat), {wl_keyboard_release}};
          wl_keyboard_add_listener(input.keyboardDevice.get(), &keyboard, self);
        }
      },
      [](void*, wl_seat*, const char*) {}};
};

Input::Input(const Display& used, const Overlay& over)
    : display(used),
      overlay(over),
      seat(used.globals.bind<wl_seat>(wl_seat_interface, newestSeat), {wl_seat_destroy}),
      cursorSurface(wl_compositor_create_surface(used.compositor.get()), {wl_surface_destroy}),
      cursorViewport(wp_viewporter_get_viewport(used.viewporter.get(), cursorSurface.get()),
                     {wp_viewport_destroy}) {
  wl_seat_add_listener(seat.get(), &Listeners::seat, this);
}

Input::~Input() = default;

void Input::setCursor(const Artwork& look, double scale) {
  auto next = SharedBuffer::create(display.shm.get(), look.size, WL_SHM_FORMAT_ARGB8888);
  if (!next)
    return;
  std::ranges::copy(look.pixels, next->row(0));
  hotSpot = look.hotSpot;
  cursorScale = scale;
  wl_surface_attach(cursorSurface.get(), next->buffer(), 0, 0);
  wl_surface_damage_buffer(cursorSurface.get(), 0, 0, look.size.width, look.size.height);
  wp_viewport_set_destination(cursorViewport.get(), static_cast<int>(std::lround(look.size.width / scale)),
                              static_cast<int>(std::lround(look.size.height / scale)));
  wl_surface_commit(cursorSurface.get());
  cursor = std::move(next);
  showCursor();
}

void Input::showCursor() {
  if (!pointerDevice || !under || !cursor)
    return;
  const auto logical = [this](int length) { return static_cast<int>(std::lround(length / cursorScale)); };
  wl_pointer_set_cursor(pointerDevice.get(), entered, cursorSurface.get(), logical(hotSpot.x - offset.x),
                        logical(hotSpot.y - offset.y));
}

void Input::enter(std::uint32_t serial, const wl_surface* surface, double x, double y) {
  entered = serial;
  under = overlay.find(surface);
  offset = {};
  showCursor();
  move(x, y);
}

void Input::move(double x, double y) {
  if (!under)
    return;
  const Point at = overlay.onScreen(*under, x, y);
  position = {at.x + offset.x, at.y + offset.y};
  if (fed)
    fed->movePointer(*position);
}

void Input::press(std::uint32_t button, bool isDown) {
  if (!fed || !position)
    return;
  if (isDown)
    fed->pressButton(buttonOf(button), *position);
  else
    fed->releaseButton(buttonOf(button), *position);
}

void Input::key(std::uint32_t code, bool isDown) {
  if (code > 0xff)
    return;
  const auto held = static_cast<std::uint8_t>(code);
  if (repeated && (isDown || repeated->code == held))
    repeated.reset();
  if (isDown ? !heldKeys.press(held) : !heldKeys.release(held))
    return;
  if (isDown && repeatInterval.count() > 0)
    repeated = Repeat{held, Clock::now() + repeatDelay};
  if (!fed)
    return;
  if (isDown)
    fed->pressKey(keyboard.keyOf(code));
  else
    fed->releaseKey(keyboard.keyOf(code));
  followJump();
}

std::optional<std::chrono::milliseconds> Input::repeat() {
  if (!repeated || !fed)
    return std::nullopt;
  const auto now = Clock::now();
  if (now >= repeated->due) {
    fed->repeatKey(keyboard.keyOf(repeated->code));
    followJump();
    repeated->due = now + repeatInterval;
  }
  return std::chrono::ceil<std::chrono::milliseconds>(repeated->due - now);
}

void Input::followJump() {
  const std::optional<Point> jump = fed->takeJump();
  if (!jump || !position)
    return;
  offset = {offset.x + jump->x - position->x, offset.y + jump->y - position->y};
  position = jump;
  showCursor();
}

}  // namespace screencapture::wayland
