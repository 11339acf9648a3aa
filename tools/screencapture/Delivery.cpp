#include "tools/screencapture/Delivery.h"

#include "platform/system/ClipboardKeeper.h"
#include "tools/screencapture/FileWriter.h"
#include "tools/screencapture/selection/Magnifier.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace screencapture {

namespace {

constexpr std::chrono::seconds keeperPatience{10};

Status leaveOnClipboard(const platform::PngFile& png) {
  const platform::ClipboardForm picture{"image/png", png.span()};
  if (platform::leaveOnClipboard(besideThis("clipboardkeeper"), {&picture, 1}, keeperPatience))
    return Taken;
  std::fputs("screencapture: the clipboard can't be taken\n", stderr);
  return NothingTaken;
}

}  // namespace

std::string besideThis(const char* name) {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  const std::string_view own(path.data(), static_cast<std::size_t>(std::max(length, ssize_t{0})));
  return std::string(own.substr(0, own.rfind('/') + 1)) + name;
}

Status deliver(const std::optional<platform::PngFile>& png, const Arguments& arguments) {
  if (!png)
    return NothingTaken;
  if (arguments.wish == Wish::PictureOnClipboard)
    return leaveOnClipboard(*png);
  const int error = writeFile(arguments.path, png->span());
  if (error == 0)
    return Taken;
  std::fprintf(stderr, "screencapture: %s: %s\n", arguments.path.c_str(), std::strerror(error));
  return NothingTaken;
}

Status deliver(std::optional<std::uint32_t> color) {
  if (!color)
    return NothingTaken;
  if (std::puts(hexOf(*color).c_str()) >= 0 && std::fflush(stdout) == 0)
    return Taken;
  std::fprintf(stderr, "screencapture: standard output: %s\n", std::strerror(errno));
  return NothingTaken;
}

}  // namespace screencapture
