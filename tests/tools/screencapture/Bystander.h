#pragma once

#include "tools/screencapture/Geometry.h"

#include <cstdint>
#include <string>
#include <vector>
#include <xcb/xcb.h>

/// A picture of the screen: pixels as the X server has them, rows without gaps.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  [[nodiscard]] std::uint32_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y * width + x)];
  }
  /// Every pixel another, as far as its bits allow.
  static Picture random(int width, int height, std::uint32_t pixelMask, unsigned seed);
  bool operator==(const Picture&) const = default;
};

/// Another program on the capture tool's X server: paints the desktop, opens windows, looks at the screen,
/// and gets in the way.
class Bystander {
 public:
  explicit Bystander(const std::string& display);
  ~Bystander();
  Bystander(const Bystander&) = delete;
  Bystander& operator=(const Bystander&) = delete;

  void paintDesktop(const Picture& picture);
  /// A shown window with a picture of its own in it.
  xcb_window_t openWindow(const screencapture::Rectangle& place, const Picture& picture,
                          bool overrideRedirect = false);
  void setProperty(xcb_window_t window, const char* name, const char* type,
                   const std::vector<std::uint32_t>& values);
  void closeWindow(xcb_window_t window);
  /// Until a window manager has framed the window; returns the frame's place.
  screencapture::Rectangle waitForFrame(xcb_window_t window);
  /// Makes the screen two monitors, side by side.
  void splitIntoMonitors(int leftWidth);

  /// Until the tool's overlay is on the screen; by then it has asked for the pointer and the keyboard. False
  /// if it takes too long.
  [[nodiscard]] bool waitForOverlay();
  [[nodiscard]] Picture look();
  /// Until the screen doesn't change any more, as it does while programs start.
  Picture lookWhenSettled();
  /// Until a pixel differs from `before`.
  void waitForChange(int x, int y, std::uint32_t before);

  bool holdKeyboard();
  void releaseKeyboard();
  /// Until another program has the keyboard to itself.
  void waitForKeyboardTaken();
  void takeClipboard();

  [[nodiscard]] screencapture::Size size() const;

 private:
  [[nodiscard]] xcb_atom_t atom(const char* name);
  xcb_pixmap_t upload(const Picture& picture);
  [[nodiscard]] Picture look(const screencapture::Rectangle& part);
  void sync();

  xcb_connection_t* connection;
  const xcb_screen_t* screen = nullptr;
};
