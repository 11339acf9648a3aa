#include "tools/clipboardkeeper/x11/SelectionOwner.h"

#include <algorithm>
#include <poll.h>
#include <string_view>

namespace clipboardkeeper {

namespace {

constexpr std::string_view atomNames[] = {"CLIPBOARD", "TARGETS",   "TIMESTAMP",
                                          "MULTIPLE",  "ATOM_PAIR", "SAVE_TARGETS",
                                          "NULL",      "INCR",      "_SORREL_CLIPBOARD_KEEPER"};
constexpr std::size_t requestOverhead = 64;           // a property's request without its data, rounded up
constexpr std::chrono::seconds receiverPatience{20};  // with a receiver that stopped asking for pieces
constexpr std::uint32_t longestMultiple = 1024;       // 32-bit words of a MULTIPLE request
// A refill comes within moments of our claim. Longer than managers were seen to take, and shorter than
// anybody needs to copy something else.
constexpr std::chrono::milliseconds refillTime{500};
constexpr int mostRefills = 5;

}  // namespace

std::unique_ptr<ClipboardOwner> SelectionOwner::take(const std::vector<platform::ClipboardForm>& contents) {
  platform::XcbConnection connection(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(connection.get()))
    return nullptr;
  // Selections belong to the whole display, so any of its screens will do.
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
  std::unique_ptr<SelectionOwner> owner(new SelectionOwner(std::move(connection), root, contents));
  owner->taken = Clock::now();
  while (!owner->own()) {
    if (!owner->mayTakeAgain())
      return nullptr;
  }
  return owner;
}

SelectionOwner::SelectionOwner(platform::XcbConnection connected, xcb_window_t root,
                               const std::vector<platform::ClipboardForm>& contents)
    : server(std::move(connected)), window(xcb_generate_id(server.get())) {
  const auto windowsAsked = xcb_query_tree(server.get(), root);
  std::vector<xcb_intern_atom_cookie_t> cookies;
  for (const std::string_view name : atomNames)
    cookies.push_back(platform::askForAtom(server.get(), name));
  for (const platform::ClipboardForm& form : contents)
    cookies.push_back(platform::askForAtom(server.get(), form.target));
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(server.get(), XCB_COPY_FROM_PARENT, window, root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  for (std::size_t i = 0; i < AtomCount; ++i)
    atoms.push_back(platform::atomFrom(server.get(), cookies[i]));
  for (std::size_t i = 0; i < contents.size(); ++i)
    offers.push_back({platform::atomFrom(server.get(), cookies[AtomCount + i]), contents[i].bytes});
  const auto windows = platform::xcbReply(server.get(), xcb_query_tree_reply, windowsAsked);
  for (int i = 0; windows && i < xcb_query_tree_children_length(windows.get()); ++i)
    programs.insert(programOf(xcb_query_tree_children(windows.get())[i]));
  const std::uint32_t yes = 1;
  xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, window, atoms[Keeper], XCB_ATOM_CARDINAL, 32, 1,
                      &yes);
}

bool SelectionOwner::own() {
  since = currentTime();
  xcb_set_selection_owner(server.get(), window, atoms[Clipboard], since);
  const auto owner = platform::xcbAsk(server.get(), xcb_get_selection_owner, xcb_get_selection_owner_reply,
                                      atoms[Clipboard]);
  isOwner = owner && owner->owner == window;
  return isOwner;
}

xcb_timestamp_t SelectionOwner::currentTime() {
  // The server tells its time with each event, and changing a property by nothing gives one.
  xcb_change_property(server.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                      nullptr);
  xcb_flush(server.get());
  while (platform::XcbPointer<xcb_generic_event_t> event{xcb_wait_for_event(server.get())}) {
    const auto* const changed = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && changed->window == window)
      return changed->time;
    setAside.push_back(std::move(event));
  }
  return XCB_CURRENT_TIME;
}

void SelectionOwner::serve() {
  xcb_flush(server.get());
  pollfd waiting{xcb_get_file_descriptor(server.get()), POLLIN, 0};
  while (isOwner || !transfers.empty()) {
    while (const auto event = nextEvent())
      handle(*event);
    std::erase_if(transfers, [now = Clock::now()](const Transfer& transfer) {
      return now - transfer.lastSign > receiverPatience;
    });
    xcb_flush(server.get());
    if (xcb_connection_has_error(server.get()))
      return;
    if (isOwner || !transfers.empty())
      poll(&waiting, 1,
           transfers.empty() ? -1 : static_cast<int>(std::chrono::milliseconds(receiverPatience).count()));
  }
}

platform::XcbPointer<xcb_generic_event_t> SelectionOwner::nextEvent() {
  if (setAside.empty())
    return platform::XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(server.get()));
  auto event = std::move(setAside.front());
  setAside.pop_front();
  return event;
}

void SelectionOwner::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
      return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_SELECTION_CLEAR:
      return lose();
    case XCB_PROPERTY_NOTIFY:
      return sendPiece(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    case XCB_DESTROY_NOTIFY:
      return forget(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    default:
      return;
  }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request) {
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
  xcb_send_event(server.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, notice.bytes);
}

bool SelectionOwner::convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property) {
  const auto put = [&](xcb_atom_t type, std::uint8_t format, std::size_t count, const void* data) {
    xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, receiver, property, type, format,
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
  if (Clock::now() - taken < refillTime)
    informed.insert(programOf(receiver));
  if (offer->bytes.size() <= pieceSize())
    return put(target, 8, offer->bytes.size(), offer->bytes.data());
  startTransfer(receiver, property, *offer);
  return true;
}

bool SelectionOwner::convertMultiple(xcb_window_t receiver, xcb_atom_t property) {
  const auto list = platform::xcbReply(
      server.get(), xcb_get_property_reply,
      xcb_get_property(server.get(), 0, receiver, property, atoms[AtomPair], 0, longestMultiple));
  if (!list || list->type != atoms[AtomPair] || list->format != 32)
    return false;
  const auto* words = static_cast<const xcb_atom_t*>(xcb_get_property_value(list.get()));
  std::vector<xcb_atom_t> pairs(words, words + (list->value_len & ~1U));  // target, property, target, ...
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    if (pairs[i + 1] == XCB_ATOM_NONE || !convert(receiver, pairs[i], pairs[i + 1]))
      pairs[i + 1] = XCB_ATOM_NONE;
  }
  xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, receiver, property, atoms[AtomPair], 32,
                      static_cast<std::uint32_t>(pairs.size()), pairs.data());
  return true;
}

void SelectionOwner::startTransfer(xcb_window_t receiver, xcb_atom_t property, const Offer& offer) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(server.get(), receiver, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(offer.bytes.size());
  xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, receiver, property, atoms[Incr], 32, 1, &size);
  std::erase_if(transfers, [&](const Transfer& transfer) {
    return transfer.receiver == receiver && transfer.property == property;
  });
  transfers.push_back({receiver, property, offer, 0, Clock::now()});
}

void SelectionOwner::sendPiece(const xcb_property_notify_event_t& event) {
  const auto transfer = std::ranges::find_if(transfers, [&](const Transfer& each) {
    return each.receiver == event.window && each.property == event.atom;
  });
  if (event.state != XCB_PROPERTY_DELETE || transfer == transfers.end())
    return;
  const auto& [target, bytes] = transfer->offer;
  const std::span piece = bytes.subspan(transfer->done, std::min(pieceSize(), bytes.size() - transfer->done));
  xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, transfer->receiver, transfer->property, target, 8,
                      static_cast<std::uint32_t>(piece.size()), piece.data());
  transfer->done += piece.size();
  transfer->lastSign = Clock::now();
  // A piece of nothing says that this was all.
  if (!piece.empty())
    return;
  const std::uint32_t noEvents = 0;
  const xcb_window_t receiver = transfer->receiver;
  transfers.erase(transfer);
  if (std::ranges::none_of(transfers, [&](const Transfer& each) { return each.receiver == receiver; }))
    xcb_change_window_attributes(server.get(), receiver, XCB_CW_EVENT_MASK, &noEvents);
}

void SelectionOwner::forget(xcb_window_t receiver) {
  std::erase_if(transfers, [&](const Transfer& transfer) { return transfer.receiver == receiver; });
}

void SelectionOwner::lose() {
  isOwner = false;
  while (!isOwner && mayTakeAgain())
    (void)own();
}

bool SelectionOwner::mayTakeAgain() {
  return Clock::now() - taken < refillTime && timesLost++ < mostRefills && isRefill();
}

bool SelectionOwner::isRefill() const {
  xcb_connection_t* const connection = server.get();
  const auto ownerAsked = xcb_get_selection_owner(connection, atoms[Clipboard]);
  const auto focusAsked = xcb_get_input_focus(connection);
  const auto owner = platform::xcbReply(connection, xcb_get_selection_owner_reply, ownerAsked);
  const auto focus = platform::xcbReply(connection, xcb_get_input_focus_reply, focusAsked);
  if (!owner || !focus)
    return false;
  if (owner->owner == XCB_WINDOW_NONE)
    return true;  // emptied by whoever owned it before us
  const std::uint32_t program = programOf(owner->owner);
  // A copy of the user's comes from the program that has the keyboard, which a manager hasn't, and a script's
  // from a program that was started for it.
  const bool isNewer = program == programOf(focus->focus) || !programs.contains(program);
  // A manager that asked us for everything first keeps our contents rather than older ones.
  const bool isOurs = informed.contains(program);
  const auto mark = platform::xcbAsk(connection, xcb_get_property, xcb_get_property_reply, 0, owner->owner,
                                     atoms[Keeper], XCB_ATOM_CARDINAL, 0, 1);
  const bool isNextKeeper = mark && mark->value_len > 0;
  return !isNewer && !isOurs && !isNextKeeper;
}

std::uint32_t SelectionOwner::programOf(xcb_window_t any) const {
  return any & ~xcb_get_setup(server.get())->resource_id_mask;
}

std::size_t SelectionOwner::pieceSize() const {
  return xcb_get_setup(server.get())->maximum_request_length * std::size_t{4} - requestOverhead;
}

}  // namespace clipboardkeeper
