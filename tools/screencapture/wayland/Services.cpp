#include "tools/screencapture/wayland/Services.h"

#include "platform/system/MappedFile.h"
#include "tools/screencapture/Delivery.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace screencapture::wayland {

namespace {

// The program limits its own waits; this is for one that hangs.
constexpr std::chrono::minutes servicePatience{3};

/// Starts the program; -1 where that fails, which is then said.
pid_t start(std::vector<std::string> words, int output) {
  words.insert(words.begin(), servicesProgram());
  std::vector<char*> arguments;
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
  pid_t process = -1;
  const int error = posix_spawn(&process, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (error != 0)
    std::fprintf(stderr, "screencapture: %s: %s\n", arguments[0], std::strerror(error));
  return error == 0 ? process : -1;
}

/// Whether the process ends with success.
bool succeeds(Display& display, pid_t process) {
  const platform::Descriptor ending(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
  const auto deadline = std::chrono::steady_clock::now() + servicePatience;
  int status = -1;
  while (waitpid(process, &status, WNOHANG) == 0) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0 || !display.handleEvents(left, ending.get())) {
      kill(process, SIGKILL);
      waitpid(process, &status, 0);
    }
  }
  return status == 0;
}

/// Takes values from the front of the answer.
class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> all) : rest(all) {}

  template <typename T>
  [[nodiscard]] std::optional<T> take() {
    if (rest.size() < sizeof(T))
      return std::nullopt;
    T value;
    std::memcpy(&value, rest.data(), sizeof value);
    rest = rest.subspan(sizeof value);
    return value;
  }
  /// Null where there are fewer.
  [[nodiscard]] const std::uint32_t* takePixels(std::size_t count) {
    if (rest.size() / sizeof(std::uint32_t) < count)
      return nullptr;
    const auto* const pixels = reinterpret_cast<const std::uint32_t*>(rest.data());
    rest = rest.subspan(count * sizeof(std::uint32_t));
    return pixels;
  }

 private:
  std::span<const std::uint8_t> rest;
};

struct NamedPicture {
  std::string output;
  Picture picture;
};

std::vector<NamedPicture> takePictures(Reader& reader, std::uint32_t count,
                                       const std::shared_ptr<const platform::MappedFile>& owner) {
  std::vector<NamedPicture> all;
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto header = reader.take<PictureHeader>();
    if (!header || header->width <= 0 || header->height <= 0)
      return {};
    const Size size{header->width, header->height};
    const auto stride = static_cast<std::size_t>(size.width);
    const std::uint32_t* const pixels = reader.takePixels(stride * static_cast<std::size_t>(size.height));
    if (!pixels)
      return {};
    all.push_back({header->output.data(), Picture(size, pixels, stride, owner)});
  }
  return all;
}

/// A picture for each output; empty where one is missing.
std::vector<Picture> sorted(std::vector<NamedPicture> named, const Display& display) {
  std::vector<Picture> pictures;
  if (named.size() == 1 && named.front().output.empty()) {
    std::vector<Rectangle> logical;
    for (const auto& output : display.outputs)
      logical.push_back(output->logical);
    return cutOutputs(named.front().picture, logical);
  }
  for (const auto& output : display.outputs) {
    const auto found = std::ranges::find(named, output->name, &NamedPicture::output);
    if (found == named.end())
      return {};
    pictures.push_back(found->picture);
  }
  return pictures;
}

}  // namespace

ServicesAnswer askServices(Display& display, ServicesQuestion question) {
  display.roundTrip();  // the outputs' names and places
  std::vector<std::string> words{question == ServicesQuestion::Color ? "color" : "picture"};
  for (const auto& output : display.outputs)
    words.push_back(output->name);
  const platform::Descriptor file = platform::newFileInMemory("screencapture");
  const pid_t process = file.isOpen() ? start(std::move(words), file.get()) : -1;
  ServicesAnswer answer;
  if (process < 0 || !succeeds(display, process))
    return answer;
  auto mapped = platform::MappedFile::of(file.get());
  if (!mapped)
    return answer;
  const auto owner = std::make_shared<const platform::MappedFile>(std::move(*mapped));
  Reader reader(owner->bytes());
  const auto header = reader.take<AnswerHeader>();
  if (!header)
    return answer;
  auto named = takePictures(reader, header->pictures, owner);
  answer.color = header->color;
  if (header->kind == AnswerHeader::Frozen)
    answer.pictures = sorted(std::move(named), display);
  else if (header->kind == AnswerHeader::Selected && !named.empty())
    answer.pictures.push_back(named.front().picture);
  const bool hasPicture = header->kind == AnswerHeader::Frozen || header->kind == AnswerHeader::Selected;
  if (hasPicture && answer.pictures.empty())
    std::fputs("screencapture: the desktop gave no picture of an output\n", stderr);
  else
    answer.kind = header->kind;
  return answer;
}

std::string servicesProgram() {
  return besideThis("screencapture-services");
}

void notify(const std::string& title, const std::string& text) {
  const pid_t process = start({"notify", title, text}, STDOUT_FILENO);
  if (process >= 0)
    waitpid(process, nullptr, 0);
}

std::vector<Picture> cutOutputs(const Picture& all, std::span<const Rectangle> logical) {
  Point least{logical.front().x, logical.front().y}, most = least;
  for (const Rectangle& each : logical) {
    least = {std::min(least.x, each.x), std::min(least.y, each.y)};
    most = {std::max(most.x, each.right()), std::max(most.y, each.bottom())};
  }
  const auto cut = [](int at, int from, int to, int length) {
    return static_cast<int>(std::lround(static_cast<double>(at - from) * length / std::max(to - from, 1)));
  };
  const auto [width, height] = all.size();
  std::vector<Picture> pictures;
  for (const Rectangle& each : logical) {
    const int left = cut(each.x, least.x, most.x, width), top = cut(each.y, least.y, most.y, height);
    const Rectangle part{left, top, cut(each.right(), least.x, most.x, width) - left,
                         cut(each.bottom(), least.y, most.y, height) - top};
    if (part.isEmpty())
      return {};
    pictures.push_back(all.part(part));
  }
  return pictures;
}

}  // namespace screencapture::wayland
