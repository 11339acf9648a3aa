// Measures the capture tool as its user meets it, in whole processes on an X server of its own at 2880x1800:
// how long until the screen is frozen and the input taken, against the bare program; and how long from the
// button's release to the complete file. One line for each figure: name, value, bound, verdict.

#include "bench/Figures.h"
#include "bench/screencapture/TestPicture.h"
#include "platform/system/Xcb.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <linux/input-event-codes.h>
#include <memory>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int width = 2880, height = 1800;
constexpr int rounds = 41;

/// Looks at the screen from outside, as a bystander.
class Observer {
 public:
  explicit Observer(const std::string& display) : connection(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection))
      throw std::runtime_error("no display");
    root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &events);
  }
  ~Observer() { xcb_disconnect(connection); }
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;

  /// Makes the picture the desktop's background.
  void paint(const std::vector<std::uint32_t>& pixels) {
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_pixmap(connection, 24, pixmap, root, width, height);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    constexpr int band = 16;
    for (int y = 0; y < height; y += band) {
      const int count = std::min(band, height - y);
      xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width,
                    static_cast<std::uint16_t>(count), 0, static_cast<std::int16_t>(y), 0, 24,
                    static_cast<std::uint32_t>(count * width * 4),
                    reinterpret_cast<const std::uint8_t*>(&pixels[static_cast<std::size_t>(y * width)]));
    }
    xcb_change_window_attributes(connection, root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, root, 0, 0, 0, 0);
    (void)lastPixel();
  }

  /// The screen's bottom right pixel, the last that a program paints.
  [[nodiscard]] std::uint32_t lastPixel() {
    const auto image = platform::xcbAsk(connection, xcb_get_image, xcb_get_image_reply,
                                        XCB_IMAGE_FORMAT_Z_PIXMAP, root, width - 1, height - 1, 1, 1, ~0U);
    return image ? *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())) & 0xffffff : 0;
  }

  void waitFor(std::uint8_t kind) {
    while (true) {
      const platform::XcbPointer<xcb_generic_event_t> event(xcb_wait_for_event(connection));
      if (!event)
        throw std::runtime_error("lost the display");
      if ((event->response_type & 0x7f) == kind)
        return;
    }
  }

  template <typename Condition>
  void waitForLastPixel(Condition condition) {
    while (!condition(lastPixel()))
      usleep(50);
  }

 private:
  xcb_connection_t* connection;
  xcb_window_t root;
};

pid_t start(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t process = 0;
  if (posix_spawn(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
    throw std::runtime_error("can't start " + words[0]);
  return process;
}

enum class Veil { None, Dims };

/// From the start of the process to the frozen picture. Both programs ask for the input before they show it.
double timeToPicture(Observer& observer, const std::vector<std::string>& words, Veil veil) {
  const std::uint32_t plain = observer.lastPixel();
  const auto begin = Clock::now();
  const pid_t process = start(words);
  observer.waitFor(XCB_MAP_NOTIFY);
  observer.waitForLastPixel([&](std::uint32_t pixel) { return veil == Veil::None || pixel != plain; });
  const double time = Milliseconds(Clock::now() - begin).count();
  kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
  observer.waitFor(XCB_DESTROY_NOTIFY);
  observer.waitForLastPixel([&](std::uint32_t pixel) { return pixel == plain; });
  return time;
}

/// From the release of the button, with the whole screen selected, until the file is there under its name.
double timeToFile(Observer& observer, testing_support::XTestInput& input,
                  const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / "whole.png";
  std::filesystem::remove(file);
  const std::uint32_t plain = observer.lastPixel();
  const int watch = inotify_init1(IN_CLOEXEC);
  inotify_add_watch(watch, folder.c_str(), IN_CREATE | IN_MOVED_TO);
  const pid_t process = start({SORREL_CAPTURE_TOOL, "-i", file.string()});
  observer.waitFor(XCB_MAP_NOTIFY);
  observer.waitForLastPixel([&](std::uint32_t pixel) { return pixel != plain; });
  input.moveTo(0, 0);
  input.pressButton(1);
  input.moveTo(width - 1, height - 1);
  observer.waitForLastPixel([&](std::uint32_t pixel) { return pixel == plain; });
  const auto begin = Clock::now();
  input.releaseButton(1);
  std::array<char, 4096> events{};
  const bool came = read(watch, events.data(), events.size()) > 0;
  const double time = Milliseconds(Clock::now() - begin).count();
  close(watch);
  int status = -1;
  waitpid(process, &status, 0);
  if (!came || status != 0)
    throw std::runtime_error("the capture tool failed");
  return time;
}

}  // namespace

int main(int argc, char** argv) try {
  const testing_support::XvfbServer server(width, height);
  setenv("DISPLAY", server.display().c_str(), 1);
  Observer observer(server.display());
  testing_support::XTestInput input(server.display());
  observer.paint(desktopPicture(width, height));

  std::string pattern = (std::filesystem::temp_directory_path() / "screencapture-bench-XXXXXX").string();
  if (!mkdtemp(pattern.data()))
    throw std::runtime_error("no folder for the files");
  const std::filesystem::path folder = pattern;

  bench::Figures figures(argc, argv);
  figures.add(bench::MeasuredRatio{
      "selection: start to frozen picture, against bare xcb",
      [&] {
        return timeToPicture(observer, {SORREL_CAPTURE_TOOL, "-i", (folder / "none.png").string()},
                             Veil::Dims);
      },
      [&] { return timeToPicture(observer, {SORREL_BARE_CAPTURE}, Veil::None); }, 2.0, rounds});
  figures.add(bench::MeasuredRatio{
      "eyedropper: start to frozen picture, against bare xcb",
      [&] {
        return timeToPicture(observer, {SORREL_CAPTURE_TOOL, "--pick-color"}, Veil::None);
      },
      [&] { return timeToPicture(observer, {SORREL_BARE_CAPTURE}, Veil::None); }, 2.0, rounds});
  figures.add(bench::Amount{"selection: button's release to complete file",
                            [&] { return timeToFile(observer, input, folder); }, "ms", 40, rounds});
  const int status = figures.run();
  std::filesystem::remove_all(folder);
  return status;
} catch (const std::exception& error) {
  std::fprintf(stderr, "bench_screencapture: %s\n", error.what());
  return 1;
}
