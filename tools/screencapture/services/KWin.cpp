#include "tools/screencapture/services/KWin.h"

#include "platform/system/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <vector>

namespace screencapture {

namespace {

constexpr std::chrono::seconds patience{5};
constexpr int pipeBytes = 1 << 20;

/// The pixels as KWin says that it writes them.
struct Shape {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t stride = 0;  // bytes
};

Message ask(sd_bus* bus, const char* output, int writing, BusError& error) {
  sd_bus_message* call = nullptr;
  sd_bus_message_new_method_call(bus, &call, "org.kde.KWin", "/org/kde/KWin/ScreenShot2",
                                 "org.kde.KWin.ScreenShot2", "CaptureScreen");
  const Message owned(call);
  sd_bus_message_set_auto_start(call, 0);
  sd_bus_message_append(call, "sa{sv}h", output, 2, "native-resolution", "b", 1, "include-cursor", "b", 0,
                        writing);
  sd_bus_message* answer = nullptr;
  (void)sd_bus_call(bus, call, microseconds(patience), error.get(), &answer);
  return Message(answer);
}

Shape shapeFrom(sd_bus_message* answer) {
  Shape shape;
  readEntries(answer, [&](const char* key) {
    std::uint32_t* const field = !std::strcmp(key, "width")    ? &shape.width
                                 : !std::strcmp(key, "height") ? &shape.height
                                 : !std::strcmp(key, "stride") ? &shape.stride
                                                               : nullptr;
    return field && holds(answer, "u") && sd_bus_message_read(answer, "v", "u", field) > 0;
  });
  return shape;
}

/// Reads all of `bytes`; false where they end before, or don't come in time.
bool readWhole(int pipe, std::span<std::uint8_t> bytes) {
  pollfd waiting{pipe, POLLIN, 0};
  while (!bytes.empty()) {
    const auto wait = std::chrono::milliseconds(patience).count();
    if (poll(&waiting, 1, static_cast<int>(wait)) <= 0)
      return false;
    const ssize_t count = read(pipe, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool addPicture(sd_bus* bus, const char* output, AnswerFile& answer) {
  platform::Pipe pipe = platform::makePipe();
  if (!pipe.reading.isOpen())
    return false;
  (void)fcntl(pipe.reading.get(), F_SETPIPE_SZ, pipeBytes);
  BusError error;
  const Message told = ask(bus, output, pipe.writing.get(), error);
  (void)pipe.writing.close();
  if (!told) {
    if (!error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) && !error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER))
      std::fprintf(stderr, "screencapture: KWin's screenshots: %s\n", error.message());
    return false;
  }
  const Shape shape = shapeFrom(told.get());
  const std::size_t rowBytes = std::size_t{shape.width} * 4;
  const std::span<std::uint32_t> pixels =
      answer.addPicture(output, static_cast<int>(shape.width), static_cast<int>(shape.height));
  if (pixels.empty() || shape.stride < rowBytes)
    return false;
  auto* to = reinterpret_cast<std::uint8_t*>(pixels.data());
  if (shape.stride == rowBytes)
    return readWhole(pipe.reading.get(), {to, pixels.size_bytes()});
  std::vector<std::uint8_t> row(shape.stride);
  for (std::uint32_t y = 0; y < shape.height; ++y, to += rowBytes) {
    if (!readWhole(pipe.reading.get(), row))
      return false;
    std::copy_n(row.begin(), rowBytes, to);
  }
  return true;
}

}  // namespace

bool addPicturesOfKWin(sd_bus* bus, std::span<const char* const> outputs, AnswerFile& answer) {
  const bool areThere = !outputs.empty() && std::ranges::all_of(outputs, [&](const char* output) {
    return addPicture(bus, output, answer);
  });
  if (!areThere)
    answer.clear();
  return areThere;
}

}  // namespace screencapture
