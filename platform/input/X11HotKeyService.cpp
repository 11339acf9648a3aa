#include "platform/input/X11HotKeyService.h"

#include "platform/base/Log.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/X11GrabbedKeys.h"
#include "platform/x11/X11Connection.h"

#include <QCoreApplication>

#include <algorithm>
#include <xcb/xinput.h>

namespace platform {
namespace {

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

X11HotKeyService::X11HotKeyService(xcb_connection_t* connection)
    : connection(connection), keyboardWatch(connection, [this] { restoreGrabs(); }) {
  for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection)); screen.rem > 0;
       xcb_screen_next(&screen))
    roots.push_back(screen.data->root);
  xinputOpcode = findXinput(connection);
  modifiers = X11Modifiers::read(connection);
  QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotKeyService::~X11HotKeyService() {
  for (const auto& [reference, key] : grabbedKeys)
    ungrab(key);
  if (!held.empty())
    setRawReleases(RawReleases::Ignored);
  xcb_flush(connection);
}

Result<HotKeyReference> X11HotKeyService::registerHotKey(const HotKey& hotKey) {
  const std::optional<int> position = evdevCode(hotKey.keyCode);
  const int keycode = position.value_or(x11MaximumKeycode) + x11KeycodeOffset;
  if (xinputOpcode < 0 || keycode > x11MaximumKeycode ||
      !modifiers.mask(HotKeyModifiers::fromInt(hotKey.modifiers)))
    return Error{QStringLiteral("there is no such key"), HotKeyStatuses::invalidHotKey};
  const GrabbedKey added{{hotKey.keyCode, hotKey.modifiers}, static_cast<xcb_keycode_t>(keycode), hotKey.id};
  if (grabbedKey(added.chord) || grab(added) == Grab::Refused)
    return Error{QStringLiteral("the key is taken"), HotKeyStatuses::hotKeyExists};
  ignoreUntilReleased(added.keycode);
  const HotKeyReference reference{++lastReference};
  grabbedKeys.emplace(reference, added);
  return reference;
}

void X11HotKeyService::unregisterHotKey(HotKeyReference reference) {
  const auto found = grabbedKeys.find(reference);
  if (found == grabbedKeys.end())
    return;
  ungrab(found->second);
  xcb_flush(connection);
  grabbedKeys.erase(found);
}

Result<> X11HotKeyService::installEventHandler(EventHandler handler) {
  eventHandler = std::move(handler);
  listening = Keys::None;
  return {};
}

void X11HotKeyService::listen(Keys keys) {
  listening = keys;
}

std::vector<SymbolicHotKey> X11HotKeyService::takenByOthers() const {
  return keysGrabbedByOthers(connection, roots, modifiers, [this](int keyCode, HotKeyModifiers held) {
    return grabbedKey({static_cast<quint32>(keyCode), static_cast<quint32>(held.toInt())}) != nullptr;
  });
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
    case XCB_GE_GENERIC: {
      const auto& raw = *reinterpret_cast<const xcb_input_raw_key_release_event_t*>(event);
      if (raw.extension != xinputOpcode || raw.event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return false;
      endHold(static_cast<xcb_keycode_t>(raw.detail));
      return true;
    }
    default:
      return false;
  }
}

bool X11HotKeyService::keyPressed(const xcb_key_press_event_t& event, uint32_t lastRequest) {
  const bool isGrabbed = isRoot(event.event);
  const bool wantsRawKeys = listening == Keys::Raw;
  if (!isGrabbed && !wantsRawKeys)
    return false;
  // The toolkit shows an event again that it was let have.
  if (isGrabbed && event.detail == lastTap.keycode && event.state == lastTap.state &&
      event.time == lastTap.pressed)
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
  lastTap = {event.detail, event.state, event.time, 0, 0};
  setRawReleases(RawReleases::Heard);
  xcb_ungrab_keyboard(connection, event.time);
  const bool isHeld = isStillDown();
  if (const GrabbedKey* const pressed = grabbedKey(chord))
    send(KeyAction::Press, pressed->id);
  if (!isHeld)
    endHold(event.detail);
  // Of no window of its own, the toolkit only takes note of the time: window managers give the keyboard to a
  // window that comes of what the user did last.
  return false;
}

bool X11HotKeyService::rawKeyPressed(const xcb_key_press_event_t& event, const Chord& chord) {
  held.insert_or_assign(event.detail, chord);  // before the handler runs, in case it waits for events itself
  if (send(KeyAction::Press, chord) == KeyOutcome::Passed) {
    held.erase(event.detail);
    return false;
  }
  lastTap = {event.detail, event.state, event.time, 0, 0};
  setRawReleases(RawReleases::Heard);
  if (!isStillDown())
    endHold(event.detail);
  return true;
}

bool X11HotKeyService::keyReleased(const xcb_key_release_event_t& event) {
  if (event.detail == lastTap.keycode)
    lastTap.released = event.time;
  return isRoot(event.event) || (listening == Keys::Raw && modifiers.isModifierKey(event.detail));
}

std::optional<X11HotKeyService::Chord> X11HotKeyService::chordOf(const xcb_key_press_event_t& event) const {
  const std::optional<int> code = keyCode(event.detail - x11KeycodeOffset);
  const std::optional<HotKeyModifiers> down = modifiers.down(event.state);
  if (!code || !down)
    return std::nullopt;
  return Chord{static_cast<quint32>(*code), static_cast<quint32>(down->toInt())};
}

const X11HotKeyService::GrabbedKey* X11HotKeyService::grabbedKey(const Chord& chord) const {
  const auto found =
      std::ranges::find_if(grabbedKeys, [&](const auto& entry) { return entry.second.chord == chord; });
  return found == grabbedKeys.end() ? nullptr : &found->second;
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

void X11HotKeyService::send(KeyAction action, HotKeyId id) const {
  const auto running = eventHandler.onHotKey;  // outlives its own replacement
  if (running && listening == Keys::Grabbed)
    running({action, id});
}

KeyOutcome X11HotKeyService::send(KeyAction action, const Chord& rawKey) const {
  const auto running = eventHandler.onRawKey;
  return running && listening == Keys::Raw ? running({action, rawKey.keyCode, rawKey.modifiers})
                                           : KeyOutcome::Passed;
}

/// Of a key that isn't down nothing is to be ignored.
void X11HotKeyService::ignoreUntilReleased(xcb_keycode_t keycode) {
  if (held.contains(keycode) || !isDown(keycode, xcb_query_keymap(connection)))
    return;
  held.emplace(keycode, std::nullopt);
  setRawReleases(RawReleases::Heard);
  if (!isDown(keycode, xcb_query_keymap(connection)))  // released before releases were heard
    endHold(keycode);
}

void X11HotKeyService::endHold(xcb_keycode_t keycode) {
  const auto found = held.find(keycode);
  if (found == held.end())
    return;
  const std::optional<Chord> chord = found->second;
  held.erase(found);
  if (held.empty()) {
    setRawReleases(RawReleases::Ignored);
    xcb_flush(connection);
  }
  if (!chord)
    return;
  // A menu may have opened or closed since the press: the handler hears the release in the way it listens
  // now.
  if (listening == Keys::Raw)
    send(KeyAction::Release, *chord);
  else if (const GrabbedKey* const released = grabbedKey(*chord))
    send(KeyAction::Release, released->id);
}

bool X11HotKeyService::isStillDown() {
  const xcb_query_keymap_cookie_t request = xcb_query_keymap(connection);
  lastTap.askedBy = request.sequence;
  return isDown(lastTap.keycode, request);
}

bool X11HotKeyService::isDown(xcb_keycode_t keycode, xcb_query_keymap_cookie_t asked) const {
  const auto keys = xcbReply(connection, xcb_query_keymap_reply, asked);
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

X11HotKeyService::Grab X11HotKeyService::grab(const GrabbedKey& key) const {
  // All requests go out before the first answer is waited for, so that together they cost one round trip.
  std::vector<xcb_void_cookie_t> requests;
  const auto mask = modifiers.mask(HotKeyModifiers::fromInt(key.chord.modifiers));
  for (const xcb_window_t root : roots)
    for (const uint16_t locks : modifiers.lockCombinations())
      requests.push_back(xcb_grab_key_checked(connection, 0, root, static_cast<uint16_t>(*mask | locks),
                                              key.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  Grab outcome = Grab::Taken;
  for (const xcb_void_cookie_t request : requests)
    if (const XcbPointer<xcb_generic_error_t> error{xcb_request_check(connection, request)})
      outcome = Grab::Refused;
  if (outcome == Grab::Refused) {
    ungrab(key);
    xcb_flush(connection);
  }
  return outcome;
}

void X11HotKeyService::ungrab(const GrabbedKey& key) const {
  const auto mask = modifiers.mask(HotKeyModifiers::fromInt(key.chord.modifiers));
  if (!mask)
    return;
  for (const xcb_window_t root : roots)
    for (const uint16_t locks : modifiers.lockCombinations())
      xcb_ungrab_key(connection, key.keycode, root, static_cast<uint16_t>(*mask | locks));
}

/// Grabs are by position, so only moved modifiers touch them.
void X11HotKeyService::restoreGrabs() {
  const X11Modifiers moved = X11Modifiers::read(connection);
  if (moved == modifiers)
    return;
  xcb_grab_server(connection);  // no key press may fall in between
  for (const auto& [reference, key] : grabbedKeys)
    ungrab(key);
  modifiers = moved;
  for (const auto& [reference, key] : grabbedKeys)
    if (!modifiers.mask(HotKeyModifiers::fromInt(key.chord.modifiers)) || grab(key) == Grab::Refused)
      log(QStringLiteral("Sorrel hot keys: key code %1 with modifiers %2 is lost to a change of the keyboard")
              .arg(key.chord.keyCode)
              .arg(key.chord.modifiers));
  xcb_ungrab_server(connection);
  xcb_flush(connection);
}

}  // namespace platform
