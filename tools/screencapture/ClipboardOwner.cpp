#include "tools/screencapture/ClipboardOwner.h"

#include <algorithm>
#include <poll.h>
#include <string_view>

namespace screencapture {

namespace {

constexpr std::string_view atomNames[] = {"CLIPBOARD", "TARGETS",   "TIMESTAMP",
                                          "MULTIPLE",  "ATOM_PAIR", "SAVE_TARGETS",
                                          "NULL",      "INCR",      "CLIPBOARD_MANAGER"};
constexpr std::size_t requestOverhead = 64;      // a property's request without its data, rounded up
constexpr std::chrono::seconds patience{20};     // with a receiver that stopped asking for pieces
constexpr std::uint32_t longestMultiple = 1024;  // 32-bit words of a MULTIPLE request

}  // namespace

std::optional<ClipboardOwner> ClipboardOwner::take(const std::vector<ClipboardForm>& contents) {
  std::optional<Display> display = Display::open();
  if (!display)
    return std::nullopt;
  ClipboardOwner owner(std::move(*display), contents);
  if (!owner.own())
    return std::nullopt;
  return owner;
}

ClipboardOwner::ClipboardOwner(Display connected, const std::vector<ClipboardForm>& contents)
    : display(std::move(connected)), window(display.newId()) {
  xcb_connection_t* const connection = display.connection();
  std::vector<xcb_intern_atom_cookie_t> cookies;
  for (const std::string_view name : atomNames)
    cookies.push_back(display.askForAtom(name));
  for (const ClipboardForm& form : contents)
    cookies.push_back(display.askForAtom(form.target));
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, display.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  for (std::size_t i = 0; i < AtomCount; ++i)
    atoms.push_back(display.atom(cookies[i]));
  for (std::size_t i = 0; i < contents.size(); ++i)
    offers.push_back({display.atom(cookies[AtomCount + i]), contents[i].bytes});
}

bool ClipboardOwner::own() {
  since = currentTime();
  xcb_set_selection_owner(display.connection(), window, atoms[Clipboard], since);
  const auto owner = reply(display, xcb_get_selection_owner_reply,
                           xcb_get_selection_owner(display.connection(), atoms[Clipboard]));
  isOwner = owner && owner->owner == window;
  return isOwner;
}

xcb_timestamp_t ClipboardOwner::currentTime() {
  // The server tells its time with each event, and changing a property by nothing gives one.
  xcb_change_property(display.connection(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                      8, 0, nullptr);
  display.flush();
  while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(display.connection())}) {
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
      return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
  }
  return XCB_CURRENT_TIME;
}

void ClipboardOwner::askManager() {
  // The property says what is worth keeping; the manager then asks for each, as any receiver does.
  std::vector<xcb_atom_t> wanted;
  for (const Offer& offer : offers)
    wanted.push_back(offer.target);
  xcb_change_property(display.connection(), XCB_PROP_MODE_REPLACE, window, atoms[SaveTargets], XCB_ATOM_ATOM,
                      32, static_cast<std::uint32_t>(wanted.size()), wanted.data());
  xcb_convert_selection(display.connection(), window, atoms[Manager], atoms[SaveTargets], atoms[SaveTargets],
                        since);
}

void ClipboardOwner::serve() {
  askManager();
  display.flush();
  pollfd waiting{xcb_get_file_descriptor(display.connection()), POLLIN, 0};
  while (isOwner || !transfers.empty()) {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(display.connection())})
      handle(*event);
    std::erase_if(transfers, [now = Clock::now()](const Transfer& transfer) {
      return now - transfer.lastSign > patience;
    });
    display.flush();
    if (display.isLost())
      return;
    if (isOwner || !transfers.empty())
      poll(&waiting, 1,
           transfers.empty() ? -1 : static_cast<int>(std::chrono::milliseconds(patience).count()));
  }
}

void ClipboardOwner::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
      return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_SELECTION_CLEAR:
      isOwner = false;
      return;
    case XCB_SELECTION_NOTIFY:
      // The manager's answer. One that has everything takes the clipboard itself once we let go of it; where
      // there is none, the server answers in its place with a no.
      isOwner =
          isOwner && reinterpret_cast<const xcb_selection_notify_event_t&>(event).property == XCB_ATOM_NONE;
      return;
    case XCB_PROPERTY_NOTIFY:
      return sendPiece(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    case XCB_DESTROY_NOTIFY:
      return forget(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    default:
      return;
  }
}

void ClipboardOwner::answer(const xcb_selection_request_event_t& request) {
  // Old programs leave the property open and look for it under the target's name.
  const xcb_atom_t property = request.property ? request.property : request.target;
  const bool done =
      request.selection == atoms[Clipboard] &&
      (request.target == atoms[Multiple] ? convertMultiple(request.requestor, property)
                                         : convert(request.requestor, request.target, property));
  // The protocol copies 32 bytes, whatever the kind of event.
  union {
    xcb_selection_notify_event_t event;
    char bytes[32];
  } notice{};
  notice.event.response_type = XCB_SELECTION_NOTIFY;
  notice.event.time = request.time;
  notice.event.requestor = request.requestor;
  notice.event.selection = request.selection;
  notice.event.target = request.target;
  notice.event.property = done ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  xcb_send_event(display.connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, notice.bytes);
}

bool ClipboardOwner::convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property) {
  const auto put = [&](xcb_atom_t type, std::uint8_t format, std::size_t count, const void* data) {
    xcb_change_property(display.connection(), XCB_PROP_MODE_REPLACE, receiver, property, type, format,
                        static_cast<std::uint32_t>(count), data);
    return true;
  };
  if (target == atoms[Targets]) {
    std::vector<xcb_atom_t> all{target, atoms[Timestamp], atoms[Multiple], atoms[SaveTargets]};
    for (const Offer& offer : offers)
      all.push_back(offer.target);
    return put(XCB_ATOM_ATOM, 32, all.size(), all.data());
  }
  if (target == atoms[Timestamp])
    return put(XCB_ATOM_INTEGER, 32, 1, &since);
  // A clipboard manager's "keep this for when you end": nothing to do, since we don't end before.
  if (target == atoms[SaveTargets])
    return put(atoms[Null], 32, 0, nullptr);
  const auto offer = std::ranges::find(offers, target, &Offer::target);
  if (offer == offers.end())
    return false;
  if (offer->bytes.size() <= pieceSize())
    return put(target, 8, offer->bytes.size(), offer->bytes.data());
  startTransfer(receiver, property, *offer);
  return true;
}

bool ClipboardOwner::convertMultiple(xcb_window_t receiver, xcb_atom_t property) {
  const auto list = reply(
      display, xcb_get_property_reply,
      xcb_get_property(display.connection(), 0, receiver, property, atoms[AtomPair], 0, longestMultiple));
  if (!list || list->type != atoms[AtomPair] || list->format != 32)
    return false;
  const auto* words = static_cast<const xcb_atom_t*>(xcb_get_property_value(list.get()));
  std::vector<xcb_atom_t> pairs(words, words + list->value_len / 2 * 2);  // target, property, target, ...
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    if (pairs[i + 1] == XCB_ATOM_NONE || !convert(receiver, pairs[i], pairs[i + 1]))
      pairs[i + 1] = XCB_ATOM_NONE;
  }
  xcb_change_property(display.connection(), XCB_PROP_MODE_REPLACE, receiver, property, atoms[AtomPair], 32,
                      static_cast<std::uint32_t>(pairs.size()), pairs.data());
  return true;
}

void ClipboardOwner::startTransfer(xcb_window_t receiver, xcb_atom_t property, const Offer& offer) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(display.connection(), receiver, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(offer.bytes.size());
  xcb_change_property(display.connection(), XCB_PROP_MODE_REPLACE, receiver, property, atoms[Incr], 32, 1,
                      &size);
  std::erase_if(transfers, [&](const Transfer& transfer) {
    return transfer.receiver == receiver && transfer.property == property;
  });
  transfers.push_back({receiver, property, offer, 0, Clock::now()});
}

void ClipboardOwner::sendPiece(const xcb_property_notify_event_t& event) {
  const auto transfer = std::ranges::find_if(transfers, [&](const Transfer& each) {
    return each.receiver == event.window && each.property == event.atom;
  });
  if (event.state != XCB_PROPERTY_DELETE || transfer == transfers.end())
    return;
  const auto& [target, bytes] = transfer->offer;
  const std::span piece = bytes.subspan(transfer->done, std::min(pieceSize(), bytes.size() - transfer->done));
  xcb_change_property(display.connection(), XCB_PROP_MODE_REPLACE, transfer->receiver, transfer->property,
                      target, 8, static_cast<std::uint32_t>(piece.size()), piece.data());
  transfer->done += piece.size();
  transfer->lastSign = Clock::now();
  // A piece of nothing says that this was all.
  if (!piece.empty())
    return;
  const std::uint32_t noEvents = 0;
  const xcb_window_t receiver = transfer->receiver;
  transfers.erase(transfer);
  if (std::ranges::none_of(transfers, [&](const Transfer& each) { return each.receiver == receiver; }))
    xcb_change_window_attributes(display.connection(), receiver, XCB_CW_EVENT_MASK, &noEvents);
}

void ClipboardOwner::forget(xcb_window_t receiver) {
  std::erase_if(transfers, [&](const Transfer& transfer) { return transfer.receiver == receiver; });
}

std::size_t ClipboardOwner::pieceSize() const {
  return display.setup().maximum_request_length * std::size_t{4} - requestOverhead;
}

}  // namespace screencapture
