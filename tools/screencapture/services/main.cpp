// Asks the desktop's services on the bus for what a Wayland compositor doesn't give the capture tool. It is a
// program of its own: where it isn't needed, nothing of the bus is loaded; and one that hangs can be ended.
//
//   screencapture-services picture [--patience MILLISECONDS] OUTPUT...   >ANSWER
//   screencapture-services color [--patience MILLISECONDS] OUTPUT...     >ANSWER
//   screencapture-services notify TITLE TEXT
//   screencapture-services ask-again     for users: takes back that they have refused screenshots
//
// An ANSWER is a file, to which an AnswerHeader is written.

#include "tools/screencapture/services/KWin.h"
#include "tools/screencapture/services/PictureFile.h"
#include "tools/screencapture/services/Portal.h"

#include <charconv>
#include <csignal>
#include <cstdio>
#include <string_view>
#include <sys/prctl.h>
#include <unistd.h>

using namespace screencapture;

namespace {

using Manner = Portal::Manner;

constexpr std::chrono::milliseconds timeToThink = std::chrono::minutes(1);
constexpr std::chrono::seconds notifyingPatience{3};

struct Question {
  std::chrono::milliseconds patience = timeToThink;
  std::span<const char* const> outputs;
};

/// The portal's picture, the file of which is gone then.
AnswerHeader::Kind addPortalPicture(Portal& portal, Manner manner, AnswerFile& answer) {
  const std::time_t asked = std::time(nullptr);
  const auto shot = portal.screenshot(manner);
  if (shot.outcome == Portal::Outcome::Cancelled)
    return AnswerHeader::Nothing;
  if (shot.outcome == Portal::Outcome::Failed && manner == Manner::WithoutAsking) {
    // The portal has one number for a refusal and for a desktop that can't do it without the user.
    if (portal.permission() == false)
      return AnswerHeader::Refused;
    return addPortalPicture(portal, Manner::Interactive, answer);
  }
  const auto path = pathOfUri(shot.value);
  if (shot.outcome != Portal::Outcome::Given || !path) {
    std::fputs("screencapture: the desktop portal gives no picture\n", stderr);
    return AnswerHeader::Nothing;
  }
  const bool isPicture = addPictureOfFile(*path, answer);
  deleteIfMadeSince(*path, asked);
  if (isPicture)
    return manner == Manner::Interactive ? AnswerHeader::Selected : AnswerHeader::Frozen;
  std::fputs("screencapture: the desktop portal's file is no picture\n", stderr);
  return AnswerHeader::Nothing;
}

bool answerWithPicture(sd_bus* bus, const Question& question, AnswerFile& answer) {
  if (addPicturesOfKWin(bus, question.outputs, answer))
    return answer.finish(AnswerHeader::Frozen);
  Portal portal(bus, question.patience);
  return answer.finish(addPortalPicture(portal, Manner::WithoutAsking, answer));
}

bool answerWithColor(sd_bus* bus, const Question& question, AnswerFile& answer) {
  if (addPicturesOfKWin(bus, question.outputs, answer))
    return answer.finish(AnswerHeader::Frozen);
  Portal portal(bus, question.patience);
  // Nobody is asked for leave to see the whole screen for the sake of one pixel.
  if (portal.permission() == true)
    return answer.finish(addPortalPicture(portal, Manner::WithoutAsking, answer));
  const auto color = portal.color();
  return answer.finish(color.outcome == Portal::Outcome::Given ? AnswerHeader::Color : AnswerHeader::Nothing,
                       color.value);
}

bool notify(sd_bus* bus, const char* title, const char* text) {
  sd_bus_message* call = nullptr;
  sd_bus_message_new_method_call(bus, &call, "org.freedesktop.Notifications",
                                 "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Notify");
  const Message owned(call);
  constexpr std::int32_t asLongAsUsual = -1;
  // Desktops take the notifications of an application away when it goes, which this one does at once: it
  // names none.
  sd_bus_message_append(call, "susssasa{sv}i", "Sorrel", 0U, "org.sorrel.Sorrel", title, text, 0, 0,
                        asLongAsUsual);
  return sd_bus_call(bus, call, microseconds(notifyingPatience), nullptr, nullptr) >= 0;
}

/// The words after the command; empty where they are wrong use.
std::optional<Question> parse(std::span<const char* const> words) {
  Question question;
  if (words.size() >= 2 && std::string_view(words[0]) == "--patience") {
    const std::string_view number = words[1];
    long long milliseconds = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), milliseconds).ec != std::errc())
      return std::nullopt;
    question.patience = std::chrono::milliseconds(milliseconds);
    words = words.subspan(2);
  }
  question.outputs = words;
  return question;
}

}  // namespace

int main(int count, char** words) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // without the tool that asked, nobody waits for the answer
  const std::span<const char* const> all(words, static_cast<std::size_t>(count));
  const std::string_view command = all.size() > 1 ? all[1] : "";
  const auto rest = all.subspan(std::min<std::size_t>(all.size(), 2));
  const Bus bus = openBus();
  if (!bus) {
    std::fputs("screencapture: there is no session bus\n", stderr);
    return 1;
  }
  if (command == "notify" && rest.size() == 2)
    return notify(bus.get(), rest[0], rest[1]) ? 0 : 1;
  if (command == "ask-again" && rest.empty())
    return Portal(bus.get(), timeToThink).forgetPermission() ? 0 : 1;
  const std::optional<Question> question = parse(rest);
  AnswerFile answer(STDOUT_FILENO);
  if (question && command == "picture")
    return answerWithPicture(bus.get(), *question, answer) ? 0 : 1;
  if (question && command == "color")
    return answerWithColor(bus.get(), *question, answer) ? 0 : 1;
  return 64;  // EX_USAGE of sysexits.h
}
