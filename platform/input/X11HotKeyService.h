#pragma once

#include "platform/input/HotKeyService.h"
#include "platform/input/X11KeyboardWatch.h"
#include "platform/input/X11Modifiers.h"

#include <QAbstractNativeEventFilter>

#include <map>

namespace platform {

/// Hot keys of an X server: a passive grab for each, on the application's own connection.
///
/// A grab takes the whole keyboard from the press to the release of its key. It is given back at once at the
/// press, so the release is heard as a raw event, which the server sends whoever has the keyboard; these are
/// asked for only while a hot key is held, so that otherwise no key wakes the program. The server repeats a
/// held key by further presses, which count for nothing until its release; nor does a key that is down as it
/// becomes a hot key, until it is pressed anew.
///
/// While raw keys are listened to, a menu of this program is open. It sees no modifier key by itself (it
/// would close at one) and no press that the handler has dealt with.
class X11HotKeyService : public HotKeyService, private QAbstractNativeEventFilter {
 public:
  /// The connection is the application's and must outlive this object.
  explicit X11HotKeyService(xcb_connection_t* connection);
  ~X11HotKeyService() override;
  X11HotKeyService(const X11HotKeyService&) = delete;
  X11HotKeyService& operator=(const X11HotKeyService&) = delete;

  Result<HotKeyReference> registerHotKey(const HotKey& hotKey) override;
  void unregisterHotKey(HotKeyReference reference) override;
  Result<> installEventHandler(EventHandler handler) override;
  void listen(Keys keys) override;
  [[nodiscard]] std::vector<SymbolicHotKey> takenByOthers() const override;

 private:
  /// A key and its modifiers as the hot-key service knows them.
  struct Chord {
    quint32 keyCode = 0;
    quint32 modifiers = 0;
    bool operator==(const Chord&) const = default;
  };
  /// The last press and release that came for a key, in the server's milliseconds.
  struct Tap {
    xcb_keycode_t keycode = 0;
    uint16_t state = 0;  // of modifiers and buttons, as it was pressed
    xcb_timestamp_t pressed = 0;
    xcb_timestamp_t released = 0;
    uint32_t askedBy = 0;  // number of the request that asked, after the press, whether the key is down
  };
  struct GrabbedKey {
    Chord chord;
    xcb_keycode_t keycode = 0;
    HotKeyId id;
  };

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  /// These say whether the event stops here. `lastRequest` is the last that the server had seen by then.
  bool keyPressed(const xcb_key_press_event_t& event, uint32_t lastRequest);
  bool keyReleased(const xcb_key_release_event_t& event);
  bool hotKeyPressed(const xcb_key_press_event_t& event, const Chord& chord);
  bool rawKeyPressed(const xcb_key_press_event_t& event, const Chord& chord);

  [[nodiscard]] std::optional<Chord> chordOf(const xcb_key_press_event_t& event) const;
  [[nodiscard]] const GrabbedKey* grabbedKey(const Chord& chord) const;
  [[nodiscard]] bool isRoot(xcb_window_t window) const;
  [[nodiscard]] bool isRepeat(const xcb_key_press_event_t& event, uint32_t lastRequest) const;
  void send(KeyAction action, HotKeyId id) const;
  KeyOutcome send(KeyAction action, const Chord& rawKey) const;

  void ignoreUntilReleased(xcb_keycode_t keycode);
  void endHold(xcb_keycode_t keycode);
  /// Asks the server about the key of the last tap.
  [[nodiscard]] bool isStillDown();
  /// The answer to a request for the keymap.
  [[nodiscard]] bool isDown(xcb_keycode_t keycode, xcb_query_keymap_cookie_t asked) const;
  enum class RawReleases { Ignored, Heard };
  void setRawReleases(RawReleases wanted) const;

  enum class Grab { Taken, Refused };
  [[nodiscard]] Grab grab(const GrabbedKey& key) const;
  void ungrab(const GrabbedKey& key) const;
  void restoreGrabs();

  xcb_connection_t* const connection;
  std::vector<xcb_window_t> roots;
  int xinputOpcode = -1;
  X11Modifiers modifiers;
  std::map<HotKeyReference, GrabbedKey> grabbedKeys;
  quint64 lastReference = 0;
  EventHandler eventHandler;
  Keys listening = Keys::None;
  /// Pressed and not released yet; none where the press wasn't reported.
  std::map<xcb_keycode_t, std::optional<Chord>> held;
  Tap lastTap;  // of the key that was reported last
  const X11KeyboardWatch keyboardWatch;
};

}  // namespace platform
