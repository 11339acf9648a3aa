#include "tools/screencapture/services/Portal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace screencapture {

namespace {

constexpr char service[] = "org.freedesktop.portal.Desktop";
constexpr char path[] = "/org/freedesktop/portal/desktop";
constexpr char screenshots[] = "org.freedesktop.portal.Screenshot";
constexpr char requestInterface[] = "org.freedesktop.portal.Request";
constexpr char applicationId[] = "org.sorrel.Sorrel";

constexpr char table[] = "screenshot", entry[] = "screenshot";  // where the store keeps the permissions
constexpr std::chrono::seconds patienceWithTheStore{3};

Message callToStore(sd_bus* bus, const char* method) {
  sd_bus_message* call = nullptr;
  sd_bus_message_new_method_call(bus, &call, "org.freedesktop.impl.portal.PermissionStore",
                                 "/org/freedesktop/impl/portal/PermissionStore",
                                 "org.freedesktop.impl.portal.PermissionStore", method);
  return Message(call);
}

/// Where the portal will answer, by its documentation: it is listened there before anything is asked.
std::string placeOf(sd_bus* bus, const std::string& token) {
  const char* name = nullptr;
  if (sd_bus_get_unique_name(bus, &name) < 0)
    return {};
  std::string sender = name + 1;  // without the colon
  std::ranges::replace(sender, '.', '_');
  return std::string(path) + "/request/" + sender + "/" + token;
}

/// The portal's answer, as a message of its own.
struct Response {
  Message message;

  static int take(sd_bus_message* message, void* self, sd_bus_error*) {
    static_cast<Response*>(self)->message.reset(sd_bus_message_ref(message));
    return 0;
  }
};

struct SlotEnd {
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, SlotEnd>;

Slot listen(sd_bus* bus, const std::string& place, Response& response) {
  sd_bus_slot* slot = nullptr;
  sd_bus_match_signal(bus, &slot, service, place.c_str(), requestInterface, "Response", &Response::take,
                      &response);
  return Slot(slot);
}

void waitFor(sd_bus* bus, const Response& response, std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!response.message) {
    const int handled = sd_bus_process(bus, nullptr);
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (handled < 0 || left.count() <= 0)
      return;
    if (handled == 0 && sd_bus_wait(bus, microseconds(left)) < 0)
      return;
  }
}

/// Tells the portal that nobody waits any more: a question that is still shown goes away.
void close(sd_bus* bus, const std::string& place) {
  (void)sd_bus_call_method_async(bus, nullptr, service, place.c_str(), requestInterface, "Close", nullptr,
                                 nullptr, nullptr);
}

bool isMissing(const BusError& error) {
  return error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
         error.is(SD_BUS_ERROR_UNKNOWN_METHOD) || error.is(SD_BUS_ERROR_UNKNOWN_INTERFACE);
}

std::uint32_t channelOf(double value) {
  return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

}  // namespace

Portal::Portal(sd_bus* used, std::chrono::milliseconds most) : bus(used), patience(most) {
  // Newer portals are told who asks, before anything else; older ones don't know the method, which is no
  // loss.
  (void)sd_bus_call_method_async(bus, nullptr, service, path, "org.freedesktop.host.portal.Registry",
                                 "Register", nullptr, nullptr, "sa{sv}", applicationId, 0);
}

template <typename T, typename Append, typename Read>
Portal::Answer<T> Portal::request(const char* method, Append append, Read read) {
  // Not to be guessed by others from one run to the next.
  const std::string token = "sorrel" + std::to_string(std::time(nullptr)) + "_" + std::to_string(++requests);
  const std::string expected = placeOf(bus, token);
  Response response;
  const Slot listening = listen(bus, expected, response);
  sd_bus_message* call = nullptr;
  sd_bus_message_new_method_call(bus, &call, service, path, screenshots, method);
  const Message owned(call);
  append(call, token.c_str());
  BusError error;
  sd_bus_message* handle = nullptr;
  const int status = sd_bus_call(bus, call, microseconds(patience), error.get(), &handle);
  const Message begun(handle);
  if (status < 0) {
    std::fprintf(stderr, "screencapture: the desktop portal: %s\n", error.message());
    return {isMissing(error) ? Outcome::Missing : Outcome::Silent, {}};
  }
  const char* actual = nullptr;
  Slot elsewhere;
  if (sd_bus_message_read(begun.get(), "o", &actual) > 0 && expected != actual)
    elsewhere = listen(bus, actual, response);  // a portal of long ago
  waitFor(bus, response, patience);
  if (!response.message) {
    std::fputs("screencapture: the desktop portal doesn't answer\n", stderr);
    close(bus, actual ? actual : expected);
    return {Outcome::Silent, {}};
  }
  std::uint32_t code = 2;
  if (sd_bus_message_read(response.message.get(), "u", &code) <= 0 || code > 1)
    return {Outcome::Failed, {}};
  if (code == 1)
    return {Outcome::Cancelled, {}};
  std::optional<T> value;
  readEntries(response.message.get(),
              [&](const char* key) { return read(response.message.get(), key, value); });
  if (value)
    return {Outcome::Given, *value};
  std::fputs("screencapture: the desktop portal's answer makes no sense\n", stderr);
  return {Outcome::Silent, {}};
}

Portal::Answer<std::string> Portal::screenshot(Manner manner) {
  return request<std::string>(
      "Screenshot",
      [manner](sd_bus_message* call, const char* token) {
        const int isInteractive = manner == Manner::Interactive ? 1 : 0;
        sd_bus_message_append(call, "sa{sv}", "", 3, "handle_token", "s", token, "interactive", "b",
                              isInteractive, "modal", "b", 0);
      },
      [](sd_bus_message* message, const char* key, std::optional<std::string>& value) {
        const char* uri = nullptr;
        if (std::strcmp(key, "uri") != 0 || !holds(message, "s") ||
            sd_bus_message_read(message, "v", "s", &uri) <= 0)
          return false;
        value = uri;
        return true;
      });
}

Portal::Answer<std::uint32_t> Portal::color() {
  return request<std::uint32_t>(
      "PickColor",
      [](sd_bus_message* call, const char* token) {
        sd_bus_message_append(call, "sa{sv}", "", 1, "handle_token", "s", token);
      },
      [](sd_bus_message* message, const char* key, std::optional<std::uint32_t>& value) {
        double red = 0, green = 0, blue = 0;
        if (std::strcmp(key, "color") != 0 || !holds(message, "(ddd)") ||
            sd_bus_message_read(message, "v", "(ddd)", &red, &green, &blue) <= 0)
          return false;
        value = channelOf(red) << 16 | channelOf(green) << 8 | channelOf(blue);
        return true;
      });
}

std::optional<bool> Portal::permission() {
  const Message call = callToStore(bus, "Lookup");
  sd_bus_message_append(call.get(), "ss", table, entry);
  sd_bus_message* answer = nullptr;
  (void)sd_bus_call(bus, call.get(), microseconds(patienceWithTheStore), nullptr, &answer);
  const Message told(answer);
  if (!told || sd_bus_message_enter_container(answer, SD_BUS_TYPE_ARRAY, "{sas}") <= 0)
    return std::nullopt;
  std::optional<bool> permission;
  while (sd_bus_message_enter_container(answer, SD_BUS_TYPE_DICT_ENTRY, "sas") > 0) {
    const char* application = nullptr;
    const char* word = nullptr;
    (void)sd_bus_message_read(answer, "s", &application);
    // Programs that the portal can't tell apart share one entry, of no name.
    const bool isOurs = application && (!*application || !std::strcmp(application, applicationId));
    (void)sd_bus_message_enter_container(answer, SD_BUS_TYPE_ARRAY, "s");
    while (sd_bus_message_read(answer, "s", &word) > 0)
      if (isOurs && (!std::strcmp(word, "yes") || !std::strcmp(word, "no")))
        permission = !std::strcmp(word, "yes");
    sd_bus_message_exit_container(answer);
    sd_bus_message_exit_container(answer);
  }
  return permission;
}

bool Portal::forgetPermission() {
  bool isTold = true;
  for (const char* application : {"", applicationId}) {
    const Message call = callToStore(bus, "DeletePermission");
    sd_bus_message_append(call.get(), "sss", table, entry, application);
    BusError error;
    const bool isGone =
        sd_bus_call(bus, call.get(), microseconds(patienceWithTheStore), error.get(), nullptr) >= 0 ||
        error.is("org.freedesktop.portal.Error.NotFound");
    isTold = isTold && isGone;
  }
  return isTold;
}

}  // namespace screencapture
