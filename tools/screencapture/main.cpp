// The interactive capture tool: lets the user select a part of the X11 screen and makes a PNG of it, or pick
// the color of one of its pixels.

#include "platform/system/ClipboardKeeper.h"
#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/FileWriter.h"
#include "tools/screencapture/selection/Magnifier.h"
#include "tools/screencapture/x11/CaptureRun.h"
#include "tools/screencapture/x11/ColorPickRun.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

using namespace screencapture;

namespace {

enum Status { Taken = 0, NothingTaken = 1 };

constexpr std::chrono::seconds keeperPatience{10};

/// The path of the program beside this one, by the same rule in the build tree and where it is installed.
std::string besideThis(const char* name) {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  const std::string_view own(path.data(), static_cast<std::size_t>(std::max(length, ssize_t{0})));
  return std::string(own.substr(0, own.rfind('/') + 1)) + name;
}

Status leaveOnClipboard(const platform::PngFile& png) {
  const platform::ClipboardForm picture{"image/png", png.span()};
  if (platform::leaveOnClipboard(besideThis("clipboardkeeper"), {&picture, 1}, keeperPatience))
    return Taken;
  std::fputs("screencapture: the clipboard can't be taken\n", stderr);
  return NothingTaken;
}

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

Status deliver(const platform::PngFile& png, const Arguments& arguments) {
  if (arguments.wish == Wish::PictureOnClipboard)
    return leaveOnClipboard(png);
  const int error = writeFile(arguments.path, png.span());
  if (error == 0)
    return Taken;
  std::fprintf(stderr, "screencapture: %s: %s\n", arguments.path.c_str(), std::strerror(error));
  return NothingTaken;
}

Status takePicture(const Display& display, const Arguments& arguments) {
  const std::optional<platform::PngFile> png = captureInteractively(display, languageOf(&variable));
  return png ? deliver(*png, arguments) : NothingTaken;
}

Status takeColor(const Display& display) {
  const std::optional<std::uint32_t> color = pickColor(display);
  if (!color)
    return NothingTaken;
  if (std::puts(hexOf(*color).c_str()) >= 0 && std::fflush(stdout) == 0)
    return Taken;
  std::fprintf(stderr, "screencapture: standard output: %s\n", std::strerror(errno));
  return NothingTaken;
}

}  // namespace

int main(int count, char** words) {
  const std::span<const char* const> given(words + (count > 0),
                                           static_cast<std::size_t>(count > 0 ? count - 1 : 0));
  const std::optional<Arguments> arguments = parseArguments(given);
  if (!arguments) {
    std::fprintf(stderr, "%s\n", usage);
    return wrongUseStatus;
  }
  const std::optional<Display> display = Display::open();
  if (!display) {
    std::fputs("screencapture: there is no X11 display\n", stderr);
    return NothingTaken;
  }
  return arguments->wish == Wish::Color ? takeColor(*display) : takePicture(*display, *arguments);
}
