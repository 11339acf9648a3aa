#pragma once

#include "tools/screencapture/ClipboardForms.h"
#include "tools/screencapture/Display.h"

#include <chrono>
#include <optional>
#include <vector>

namespace screencapture {

/// Offers contents on the X clipboard, by the rules that X programs exchange selections with: beside the
/// targets of their forms also TARGETS, TIMESTAMP, MULTIPLE and SAVE_TARGETS; a form that is larger than a
/// request goes over in pieces (INCR).
class ClipboardOwner {
 public:
  /// Takes the clipboard; empty where there is no display or it was not granted. The bytes of the forms
  /// must outlive this.
  [[nodiscard]] static std::optional<ClipboardOwner> take(const std::vector<ClipboardForm>& contents);

  /// Asks the clipboard manager, if there is one, to keep the contents, and answers other programs until it
  /// has them or one of the others takes the clipboard, and none still waits for pieces; or until the X
  /// server is gone.
  void serve();

 private:
  using Clock = std::chrono::steady_clock;

  enum AtomName {
    Clipboard,
    Targets,
    Timestamp,
    Multiple,
    AtomPair,
    SaveTargets,
    Null,
    Incr,
    Manager,
    AtomCount
  };

  struct Offer {
    xcb_atom_t target;
    std::span<const std::uint8_t> bytes;
  };

  /// A form on its way in pieces: the receiver deletes the property to ask for the next one.
  struct Transfer {
    xcb_window_t receiver;
    xcb_atom_t property;
    Offer offer;
    std::size_t done;
    Clock::time_point lastSign;
  };

  ClipboardOwner(Display connected, const std::vector<ClipboardForm>& contents);

  [[nodiscard]] bool own();
  [[nodiscard]] xcb_timestamp_t currentTime();
  void askManager();
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  /// Puts the clipboard's contents in one form onto the receiver's window; false if we don't have that form.
  [[nodiscard]] bool convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property);
  [[nodiscard]] bool convertMultiple(xcb_window_t receiver, xcb_atom_t property);
  void startTransfer(xcb_window_t receiver, xcb_atom_t property, const Offer& offer);
  void sendPiece(const xcb_property_notify_event_t& event);
  void forget(xcb_window_t receiver);
  [[nodiscard]] std::size_t pieceSize() const;

  Display display;
  std::vector<Offer> offers;
  xcb_window_t window = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> atoms;
  xcb_timestamp_t since = XCB_CURRENT_TIME;
  bool isOwner = false;
  std::vector<Transfer> transfers;
};

}  // namespace screencapture
