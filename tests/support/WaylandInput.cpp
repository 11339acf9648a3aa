#include "tests/support/WaylandInput.h"

#include "platform/system/MappedFile.h"
#include "platform/wayland/WaylandGlobals.h"

#include <linux/input-event-codes.h>
#include <stdexcept>
#include <time.h>
#include <virtual-keyboard.h>
#include <wlr-virtual-pointer-unstable-v1.h>
#include <xkbcommon/xkbcommon.h>

namespace testing_support {

namespace {

constexpr int x11KeycodeOffset = 8;    // what keymaps count keys from
constexpr double partsOfAPoint = 256;  // as fine as the protocol tells places

std::uint32_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<std::uint32_t>(time.tv_sec * 1000 + time.tv_nsec / 1'000'000);
}

std::uint32_t codeOf(int button) {
  return button == 1 ? BTN_LEFT : button == 2 ? BTN_MIDDLE : BTN_RIGHT;
}

xkb_keymap* compile(const QString& layout) {
  const std::unique_ptr<xkb_context, void (*)(xkb_context*)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                     xkb_context_unref);
  const std::string name = layout.toStdString();
  const xkb_rule_names names{"evdev", "pc105", name.c_str(), nullptr, nullptr};
  return xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
}

}  // namespace

WaylandInput::WaylandInput(wl_display* connected, const platform::WaylandGlobals& globals,
                           const QString& layout)
    : display(connected),
      keymap(nullptr, xkb_keymap_unref),
      state(nullptr, xkb_state_unref),
      keyboard(nullptr, zwp_virtual_keyboard_v1_destroy),
      pointer(nullptr, zwlr_virtual_pointer_v1_destroy) {
  const platform::WaylandObject<wl_seat> seat(globals.bind<wl_seat>(wl_seat_interface, 1), {wl_seat_destroy});
  const platform::WaylandObject<zwp_virtual_keyboard_manager_v1> keyboards(
      globals.bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface, 1),
      {zwp_virtual_keyboard_manager_v1_destroy});
  const platform::WaylandObject<zwlr_virtual_pointer_manager_v1> pointers(
      globals.bind<zwlr_virtual_pointer_manager_v1>(zwlr_virtual_pointer_manager_v1_interface, 1),
      {zwlr_virtual_pointer_manager_v1_destroy});
  if (!seat || !keyboards || !pointers)
    throw std::runtime_error("the compositor lets nobody play its keyboard and pointer");
  pointer.reset(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers.get(), seat.get()));
  if (!layout.isEmpty())
    plugIn(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards.get(), seat.get()), layout);
  roundTrip();
}

WaylandInput::~WaylandInput() = default;

void WaylandInput::plugIn(zwp_virtual_keyboard_v1* newKeyboard, const QString& layout) {
  keyboard.reset(newKeyboard);
  keymap.reset(compile(layout));
  if (!keymap)
    throw std::runtime_error("no keyboard layout " + layout.toStdString());
  state.reset(xkb_state_new(keymap.get()));
  const std::unique_ptr<char, void (*)(void*)> text(
      xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1), free);
  const platform::Descriptor file = platform::newFileInMemory("keymap");
  const std::string_view all(text.get(), std::strlen(text.get()) + 1);
  if (platform::writeAll(file.get(), platform::bytesOf(all)) != 0)
    throw std::runtime_error("no memory for a keymap");
  zwp_virtual_keyboard_v1_keymap(keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(),
                                 static_cast<std::uint32_t>(all.size()));
}

void WaylandInput::tapKey(int evdevCode) {
  pressKey(evdevCode);
  releaseKey(evdevCode);
}

void WaylandInput::turnKey(int evdevCode, bool isDown) {
  zwp_virtual_keyboard_v1_key(keyboard.get(), now(), static_cast<std::uint32_t>(evdevCode),
                              isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
  const auto changed =
      xkb_state_update_key(state.get(), static_cast<xkb_keycode_t>(evdevCode + x11KeycodeOffset),
                           isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
  if (changed != 0) {
    const auto mask = [&](xkb_state_component component) {
      return xkb_state_serialize_mods(state.get(), component);
    };
    zwp_virtual_keyboard_v1_modifiers(keyboard.get(), mask(XKB_STATE_MODS_DEPRESSED),
                                      mask(XKB_STATE_MODS_LATCHED), mask(XKB_STATE_MODS_LOCKED),
                                      xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE));
  }
  roundTrip();
}

void WaylandInput::moveTo(QPointF point, QSize space) {
  const auto parts = [](double length) { return static_cast<std::uint32_t>(length * partsOfAPoint + 0.5); };
  zwlr_virtual_pointer_v1_motion_absolute(pointer.get(), now(), parts(point.x()), parts(point.y()),
                                          parts(space.width()), parts(space.height()));
  zwlr_virtual_pointer_v1_frame(pointer.get());
  roundTrip();
}

void WaylandInput::turnButton(int button, bool isDown) {
  zwlr_virtual_pointer_v1_button(pointer.get(), now(), codeOf(button),
                                 isDown ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
  zwlr_virtual_pointer_v1_frame(pointer.get());
  roundTrip();
}

void WaylandInput::clickButton(int button) {
  pressButton(button);
  releaseButton(button);
}

void WaylandInput::roundTrip() {
  if (wl_display_roundtrip(display) < 0)
    throw std::runtime_error("the compositor is gone");
}

}  // namespace testing_support
