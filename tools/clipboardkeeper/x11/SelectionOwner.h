#pragma once

#include "platform/system/ClipboardForms.h"
#include "platform/system/Xcb.h"
#include "tools/clipboardkeeper/ClipboardOwner.h"

#include <chrono>
#include <deque>
#include <memory>
#include <set>
#include <vector>

namespace clipboardkeeper {

/// Offers contents on the X clipboard, by the rules that X programs exchange selections with: beside the
/// targets of their forms also TARGETS, TIMESTAMP, MULTIPLE and SAVE_TARGETS; a form that is larger than a
/// request goes over in pieces (INCR).
class SelectionOwner : public ClipboardOwner {
 public:
  /// Takes the clipboard; null where there is no display or it was not granted. The bytes of the forms
  /// must outlive this.
  [[nodiscard]] static std::unique_ptr<ClipboardOwner> take(
      const std::vector<platform::ClipboardForm>& contents);

  /// A clipboard manager that found the clipboard empty just before may put its older contents there just
  /// after: see isRefill(). Then the clipboard is taken again.
  void serve() override;

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
    Keeper,
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

  SelectionOwner(platform::XcbConnection connected, xcb_window_t root,
                 const std::vector<platform::ClipboardForm>& contents);

  [[nodiscard]] bool own();
  [[nodiscard]] xcb_timestamp_t currentTime();
  [[nodiscard]] platform::XcbPointer<xcb_generic_event_t> nextEvent();
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  /// Puts the clipboard's contents in one form onto the receiver's window; false if we don't have that form.
  [[nodiscard]] bool convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property);
  [[nodiscard]] bool convertMultiple(xcb_window_t receiver, xcb_atom_t property);
  void startTransfer(xcb_window_t receiver, xcb_atom_t property, const Offer& offer);
  void sendPiece(const xcb_property_notify_event_t& event);
  void forget(xcb_window_t receiver);
  [[nodiscard]] std::size_t pieceSize() const;

  void lose();
  [[nodiscard]] bool mayTakeAgain();
  /// Whether the clipboard was taken from us by a program that only puts older contents back, rather than by
  /// the user's next copy.
  [[nodiscard]] bool isRefill() const;
  /// What all windows of one program have in common.
  [[nodiscard]] std::uint32_t programOf(xcb_window_t window) const;

  platform::XcbConnection server;
  xcb_window_t window = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> atoms;
  std::vector<Offer> offers;
  xcb_timestamp_t since = XCB_CURRENT_TIME;
  bool isOwner = false;
  Clock::time_point taken{};
  int timesLost = 0;
  std::set<std::uint32_t> programs;  // those that had windows before we took the clipboard
  std::set<std::uint32_t> informed;  // those that were given one of the forms just after that
  std::deque<platform::XcbPointer<xcb_generic_event_t>> setAside;  // for when the server's time is known
  std::vector<Transfer> transfers;
};

}  // namespace clipboardkeeper
