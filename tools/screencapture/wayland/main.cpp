// The interactive capture tool on Wayland: screencapture becomes this program where it meets a compositor.

#include "tools/screencapture/Delivery.h"
#include "tools/screencapture/wayland/Runs.h"

#include <cstdio>

using namespace screencapture;

int main(int count, char** words) {
  const std::optional<Arguments> arguments = parseCommandLine(count, words);
  if (!arguments) {
    std::fprintf(stderr, "%s\n", usage);
    return wrongUseStatus;
  }
  const std::unique_ptr<wayland::Display> display = wayland::Display::open();
  if (!display)
    return NothingTaken;
  if (arguments->wish == Wish::Color)
    return deliver(wayland::pickColor(*display));
  return deliver(wayland::captureInteractively(*display, languageOfUser()), *arguments);
}
