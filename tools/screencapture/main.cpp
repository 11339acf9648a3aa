// The interactive capture tool: lets the user select a part of the X11 screen and makes a PNG of it, or pick
// the color of one of its pixels.

#include "tools/screencapture/Delivery.h"
#include "tools/screencapture/x11/CaptureRun.h"
#include "tools/screencapture/x11/ColorPickRun.h"

#include <cstdio>

using namespace screencapture;

int main(int count, char** words) {
  const std::optional<Arguments> arguments = parseCommandLine(count, words);
  if (!arguments) {
    std::fprintf(stderr, "%s\n", usage);
    return wrongUseStatus;
  }
  const std::optional<Display> display = Display::open();
  if (!display) {
    std::fputs("screencapture: there is no X11 display\n", stderr);
    return NothingTaken;
  }
  if (arguments->wish == Wish::Color)
    return deliver(pickColor(*display));
  return deliver(captureInteractively(*display, languageOfUser()), *arguments);
}
