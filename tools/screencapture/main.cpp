// The interactive capture tool: lets the user select a part of the X11 screen and makes a PNG of it.

#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/CaptureRun.h"
#include "tools/screencapture/Clipboard.h"
#include "tools/screencapture/FileWriter.h"

#include <cstdio>
#include <cstring>
#include <string_view>

using namespace screencapture;

namespace {

enum Status { Taken = 0, NothingTaken = 1 };

Status reportClipboard(bool isTaken) {
  if (!isTaken)
    std::fputs("screencapture: the clipboard can't be taken\n", stderr);
  return isTaken ? Taken : NothingTaken;
}

Status deliver(const platform::PngFile& png, const Arguments& arguments) {
  if (arguments.destination == Destination::Clipboard)
    return reportClipboard(leaveOnClipboard(png.span()));
  const int error = writeFile(arguments.path, png.span());
  if (error == 0)
    return Taken;
  std::fprintf(stderr, "screencapture: %s: %s\n", arguments.path.c_str(), std::strerror(error));
  return NothingTaken;
}

}  // namespace

int main(int count, char** words) {
  const std::span<const char* const> given(words + (count > 0),
                                           static_cast<std::size_t>(count > 0 ? count - 1 : 0));
  if (given.size() == 1 && std::string_view(given[0]) == holderArgument)
    return runClipboardHolder();
  if (given.size() == 1 && std::string_view(given[0]) == keepArgument)
    return reportClipboard(leaveInputOnClipboard());
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
  const std::optional<platform::PngFile> png = captureInteractively(*display);
  return png ? deliver(*png, *arguments) : NothingTaken;
}
