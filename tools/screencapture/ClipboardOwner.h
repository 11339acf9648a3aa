#pragma once

#include "tools/screencapture/Display.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace screencapture {

/// Offers a PNG file on the X clipboard, by the rules that X programs exchange selections with: the targets
/// image/png, TARGETS, TIMESTAMP, MULTIPLE and SAVE_TARGETS; a file that is larger than a request goes over
/// in pieces (INCR).
class ClipboardOwner {
 public:
  /// Takes the clipboard; empty where there is no display or it was not granted. `picture` must outlive this.
  [[nodiscard]] static std::optional<ClipboardOwner> take(std::span<const std::uint8_t> picture);

  /// Answers other programs until one of them takes the clipboard and none still waits for pieces, or until
  /// the X server is gone.
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
    Png,
    AtomCount
  };

  /// A file on its way in pieces: the receiver deletes the property to ask for the next one.
  struct Transfer {
    xcb_window_t receiver;
    xcb_atom_t property;
    std::size_t done;
    Clock::time_point lastSign;
  };

  ClipboardOwner(Display connected, std::span<const std::uint8_t> offered);

  [[nodiscard]] bool own();
  [[nodiscard]] xcb_timestamp_t currentTime();
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  /// Puts the clipboard's contents in one form onto the receiver's window; false if we don't have that form.
  [[nodiscard]] bool convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property);
  [[nodiscard]] bool convertMultiple(xcb_window_t receiver, xcb_atom_t property);
  void startTransfer(xcb_window_t receiver, xcb_atom_t property);
  void sendPiece(const xcb_property_notify_event_t& event);
  void forget(xcb_window_t receiver);
  [[nodiscard]] std::size_t pieceSize() const;

  Display display;
  std::span<const std::uint8_t> picture;
  xcb_window_t window = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> atoms;
  xcb_timestamp_t since = XCB_CURRENT_TIME;
  bool isOwner = false;
  std::vector<Transfer> transfers;
};

}  // namespace screencapture
