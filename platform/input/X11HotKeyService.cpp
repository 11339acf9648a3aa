#include "platform/input/X11HotKeyService.h"

#include "platform/base/Log.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/XcbXkb.h"
#include "platform/x11/X11Connection.h"

#include <QCoreApplication>

#include <algorithm>
#include <xcb/xinput.h>

namespace platform {
namespace {

constexpr EventHandlerReference theHandler{1};
constexpr xcb_timestamp_t shortestRepeatMilliseconds = 5;

/// The major opcode of XInput if it has raw events that no grab holds back, which came with 2.1; else -1.
int findXinput(xcb_connection_t* connection) {
  const auto* const extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (!extension || !extension->present)
    return -1;
  const XcbPointer<xcb_input_xi_query_version_reply_t> version(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
  const bool isEnough = version && (version->major_version > 2 || version->minor_version >= 1);
  return isEnough ? extension->major_opcode : -1;
}

}  // namespace

X11HotKeyService::X11HotKeyService(xcb_connection_t* x11) : connection(x11) {
  for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection)); screen.rem > 0;
       xcb_screen_next(&screen))
    roots.push_back(screen.data->root);
  if (const auto* const xkb = xcb_get_extension_data(connection, &xcb_xkb_id); xkb && xkb->present)
    xkbFirstEvent = xkb->first_event;
  xinputOpcode = findXinput(connection);
  modifiers = X11Modifiers::read(connection);
  QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotKeyService::~X11HotKeyService() {
  for (const auto& [reference, hotKey] : hotKeys)
    ungrab(hotKey);
  if (!held.empty())
    setRawReleases(RawReleases::Ignored);
  xcb_flush(connection);
}

HotKeyService::Registration X11HotKeyService::registerHotKey(quint32 keyCode, quint32 wanted, HotKeyId id) {
  const std::optional<int> position = evdevCode(keyCode);
  const int keycode = position.value_or(x11MaximumKeycode) + x11KeycodeOffset;
  if (xinputOpcode < 0 || keycode > x11MaximumKeycode || !modifiers.mask(HotKeyModifiers::fromInt(wanted)))
    return {HotKeyStatuses::invalidHotKey, {}};
  const HotKey added{{keyCode, wanted}, static_cast<xcb_keycode_t>(keycode), id};
  if (hotKey(added.chord) || grab(added) == Grab::Refused)
    return {HotKeyStatuses::hotKeyExists, {}};
  const HotKeyReference reference{++lastReference};
  hotKeys.emplace(reference, added);
  return {HotKeyStatuses::noError, reference};
}

void X11HotKeyService::unregisterHotKey(HotKeyReference reference) {
  const auto found = hotKeys.find(reference);
  if (found == hotKeys.end())
    return;
  ungrab(found->second);
  xcb_flush(connection);
  hotKeys.erase(found);
}

HotKeyService::Installation X11HotKeyService::installEventHandler(EventHandler handler) {
  eventHandler = std::move(handler);
  wantedKinds.clear();
  return {HotKeyStatuses::noError, theHandler};
}

void X11HotKeyService::addEventTypes(EventHandlerReference, std::span<const EventTypeSpec> types) {
  for (const EventTypeSpec& type : types)
    wantedKinds.insert(type.kind);
}

void X11HotKeyService::removeEventTypes(EventHandlerReference, std::span<const EventTypeSpec> types) {
  for (const EventTypeSpec& type : types)
    wantedKinds.erase(type.kind);
}

SystemVersion X11HotKeyService::systemVersion() const {
  return {13, 0};  // keys under an open menu are heard as raw key events, in the native event filter
}

bool X11HotKeyService::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  switch (event->response_type) {  // an event that another program made up has a further bit and is no key
    case XCB_KEY_PRESS:
      return keyPressed(*reinterpret_cast<const xcb_key_press_event_t*>(event), event->full_sequence);
    case XCB_KEY_RELEASE:
      return keyReleased(*reinterpret_cast<const xcb_key_release_event_t*>(event));
    case XCB_MAPPING_NOTIFY:
      keyboardChanged();
      return false;
    case XCB_GE_GENERIC: {
      const auto& raw = *reinterpret_cast<const xcb_input_raw_key_release_event_t*>(event);
      if (raw.extension != xinputOpcode || raw.event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return false;
      endHold(static_cast<xcb_keycode_t>(raw.detail));
      return true;
    }
    default:
      // An event of XKEYBOARD tells its own type in the byte after.
      if (event->response_type == xkbFirstEvent &&
          (event->pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event->pad0 == XCB_XKB_MAP_NOTIFY))
        keyboardChanged();
      return false;
  }
}

bool X11HotKeyService::keyPressed(const xcb_key_press_event_t& event, uint32_t lastRequest) {
  const bool isGrabbed = isRoot(event.event);
  const bool wantsRawKeys = wants(HotKeyEventKind::RawKeyDown);
  if (!isGrabbed && !wantsRawKeys)
    return false;
  if (isRepeat(event, lastRequest)) {
    if (event.detail == lastTap.keycode)
      lastTap.pressed = event.time;
    // The repeat has started the passive grab again.
    if (isGrabbed) {
      xcb_ungrab_keyboard(connection, event.time);
      xcb_flush(connection);
    }
    return true;
  }
  if (wantsRawKeys && modifiers.isModifierKey(event.detail))
    return true;
  const std::optional<Chord> chord = chordOf(event);
  if (!chord)
    return false;
  return wantsRawKeys ? rawKeyPressed(event, *chord) : hotKeyPressed(event, *chord);
}

bool X11HotKeyService::hotKeyPressed(const xcb_key_press_event_t& event, const Chord& chord) {
  // Raw releases are asked for before the keyboard is given back, so that no release falls between. A release
  // that came before both shows in isStillDown(), whose answer also says that the keyboard is free by now.
  held.insert_or_assign(event.detail, chord);
  lastTap = {event.detail, event.time, 0, 0};
  setRawReleases(RawReleases::Heard);
  xcb_ungrab_keyboard(connection, event.time);
  const bool isHeld = isStillDown();
  if (const HotKey* const pressed = hotKey(chord); pressed && wants(HotKeyEventKind::HotKeyPressed)) {
    HotKeyEvent press;
    press.kind = HotKeyEventKind::HotKeyPressed;
    press.hotKeyId = pressed->id;
    send(press);
  }
  if (!isHeld)
    endHold(event.detail);
  return true;
}

bool X11HotKeyService::rawKeyPressed(const xcb_key_press_event_t& event, const Chord& chord) {
  held.insert_or_assign(event.detail, chord);  // before the handler runs, in case it waits for events itself
  HotKeyEvent press;
  press.kind = HotKeyEventKind::RawKeyDown;
  press.keyCode = chord.keyCode;
  press.modifiers = chord.modifiers;
  if (send(press) != HotKeyStatuses::noError) {
    held.erase(event.detail);
    return false;
  }
  lastTap = {event.detail, event.time, 0, 0};
  setRawReleases(RawReleases::Heard);
  if (!isStillDown())
    endHold(event.detail);
  return true;
}

bool X11HotKeyService::keyReleased(const xcb_key_release_event_t& event) {
  if (event.detail == lastTap.keycode)
    lastTap.released = event.time;
  return isRoot(event.event) || (wants(HotKeyEventKind::RawKeyUp) && modifiers.isModifierKey(event.detail));
}

std::optional<X11HotKeyService::Chord> X11HotKeyService::chordOf(const xcb_key_press_event_t& event) const {
  const std::optional<int> code = keyCode(event.detail - x11KeycodeOffset);
  const std::optional<HotKeyModifiers> down = modifiers.down(event.state);
  if (!code || !down)
    return std::nullopt;
  return Chord{static_cast<quint32>(*code), static_cast<quint32>(down->toInt())};
}

const X11HotKeyService::HotKey* X11HotKeyService::hotKey(const Chord& chord) const {
  const auto found =
      std::ranges::find_if(hotKeys, [&](const auto& entry) { return entry.second.chord == chord; });
  return found == hotKeys.end() ? nullptr : &found->second;
}

bool X11HotKeyService::isRoot(xcb_window_t window) const {
  return std::ranges::find(roots, window) != roots.end();
}

/// A key may be let go before its first press could be dealt with; its repeats are then waiting, sent before
/// the server was asked about the key. Between two of them the server reports a release too, at the time of
/// the second. No hand lets a key go and presses it again in one millisecond; a program does, but holds it no
/// longer.
bool X11HotKeyService::isRepeat(const xcb_key_press_event_t& event, uint32_t lastRequest) const {
  if (held.contains(event.detail))
    return true;
  const bool wasWaiting = static_cast<int32_t>(lastRequest - lastTap.askedBy) < 0;
  return event.detail == lastTap.keycode && wasWaiting && event.time == lastTap.released &&
         lastTap.released - lastTap.pressed >= shortestRepeatMilliseconds;
}

HotKeyStatus X11HotKeyService::send(const HotKeyEvent& event) const {
  if (!eventHandler || !wants(event.kind))
    return HotKeyStatuses::eventNotHandled;
  const EventHandler running = eventHandler;  // outlives its own replacement
  return running(&event);
}

void X11HotKeyService::endHold(xcb_keycode_t keycode) {
  const auto found = held.find(keycode);
  if (found == held.end())
    return;
  const Chord chord = found->second;
  held.erase(found);
  if (held.empty()) {
    setRawReleases(RawReleases::Ignored);
    xcb_flush(connection);
  }
  // A menu may have opened or closed since the press: the handler hears the release in the way it listens
  // now.
  HotKeyEvent release;
  if (wants(HotKeyEventKind::RawKeyUp)) {
    release.kind = HotKeyEventKind::RawKeyUp;
    release.keyCode = chord.keyCode;
    release.modifiers = chord.modifiers;
    send(release);
  } else if (const HotKey* const released = hotKey(chord)) {
    release.kind = HotKeyEventKind::HotKeyReleased;
    release.hotKeyId = released->id;
    send(release);
  }
}

bool X11HotKeyService::isStillDown() {
  const xcb_query_keymap_cookie_t request = xcb_query_keymap(connection);
  lastTap.askedBy = request.sequence;
  const int keycode = lastTap.keycode;
  const XcbPointer<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(connection, request, nullptr));
  return keys && (keys->keys[keycode / 8] & (1U << (keycode % 8)));
}

void X11HotKeyService::setRawReleases(RawReleases wanted) const {
  struct {
    xcb_input_event_mask_t head;
    uint32_t bits;
  } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
         wanted == RawReleases::Heard ? uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE} : 0U};
  for (const xcb_window_t root : roots)
    xcb_input_xi_select_events(connection, root, 1, &mask.head);
}

X11HotKeyService::Grab X11HotKeyService::grab(const HotKey& hotKey) const {
  // All requests go out before the first answer is waited for, so that together they cost one round trip.
  std::vector<xcb_void_cookie_t> requests;
  const auto mask = modifiers.mask(HotKeyModifiers::fromInt(hotKey.chord.modifiers));
  for (const xcb_window_t root : roots)
    for (const uint16_t locks : modifiers.lockCombinations())
      requests.push_back(xcb_grab_key_checked(connection, 0, root, static_cast<uint16_t>(*mask | locks),
                                              hotKey.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  Grab outcome = Grab::Taken;
  for (const xcb_void_cookie_t request : requests)
    if (const XcbPointer<xcb_generic_error_t> error{xcb_request_check(connection, request)})
      outcome = Grab::Refused;
  if (outcome == Grab::Refused) {
    ungrab(hotKey);
    xcb_flush(connection);
  }
  return outcome;
}

void X11HotKeyService::ungrab(const HotKey& hotKey) const {
  const auto mask = modifiers.mask(HotKeyModifiers::fromInt(hotKey.chord.modifiers));
  if (!mask)
    return;
  for (const xcb_window_t root : roots)
    for (const uint16_t locks : modifiers.lockCombinations())
      xcb_ungrab_key(connection, hotKey.keycode, root, static_cast<uint16_t>(*mask | locks));
}

/// A new keymap comes as a burst of events.
void X11HotKeyService::keyboardChanged() {
  if (!restoring.isPending())
    restoring = MainQueue::main().asyncAfter({}, [this] { restoreGrabs(); });
}

/// Grabs are by position, so only moved modifiers touch them.
void X11HotKeyService::restoreGrabs() {
  const X11Modifiers moved = X11Modifiers::read(connection);
  if (moved == modifiers)
    return;
  xcb_grab_server(connection);  // no key press may fall in between
  for (const auto& [reference, hotKey] : hotKeys)
    ungrab(hotKey);
  modifiers = moved;
  for (const auto& [reference, hotKey] : hotKeys)
    if (!modifiers.mask(HotKeyModifiers::fromInt(hotKey.chord.modifiers)) || grab(hotKey) == Grab::Refused)
      log(QStringLiteral("Sorrel hot keys: key code %1 with modifiers %2 is lost to a change of the keyboard")
              .arg(hotKey.chord.keyCode)
              .arg(hotKey.chord.modifiers));
  xcb_ungrab_server(connection);
  xcb_flush(connection);
}

}  // namespace platform
