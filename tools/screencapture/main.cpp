// The interactive capture tool: lets the user select a part of the screen and makes a PNG of it, or pick the
// color of one of its pixels. This program does so on X11; on Wayland another beside it takes its place, so
// that neither loads the other's libraries.

#include "tools/screencapture/Delivery.h"
#include "tools/screencapture/WaylandSocket.h"
#include "tools/screencapture/x11/CaptureRun.h"
#include "tools/screencapture/x11/ColorPickRun.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

using namespace screencapture;

namespace {

/// Becomes the program for Wayland; returns only where that fails.
Status goOnWithWayland(char** words) {
  const std::string program = besideThis("screencapture-wayland");
  execv(program.c_str(), words);
  std::fprintf(stderr, "screencapture: %s: %s\n", program.c_str(), std::strerror(errno));
  return NothingTaken;
}

}  // namespace

int main(int count, char** words) {
  const std::optional<Arguments> arguments = parseCommandLine(count, words);
  if (!arguments) {
    std::fprintf(stderr, "%s\n", usage);
    return wrongUseStatus;
  }
  // A Wayland session counts even where there is an X server beside it, which sees X programs alone.
  if (handOverWaylandSocket())
    return goOnWithWayland(words);
  const std::optional<Display> display = Display::open();
  if (!display) {
    std::fputs("screencapture: there is no X11 display\n", stderr);
    return NothingTaken;
  }
  if (arguments->wish == Wish::Color)
    return deliver(pickColor(*display));
  return deliver(captureInteractively(*display, languageOfUser()), *arguments);
}
