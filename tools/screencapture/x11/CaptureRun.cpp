#include "tools/screencapture/x11/CaptureRun.h"

#include "tools/screencapture/x11/FrozenScreen.h"
#include "tools/screencapture/x11/Input.h"
#include "tools/screencapture/x11/Overlay.h"
#include "tools/screencapture/x11/Resources.h"
#include "tools/screencapture/x11/WindowList.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <poll.h>
#include <string_view>
#include <xcb/randr.h>

namespace screencapture {

namespace {

// How long until input that another program holds is asked for again.
constexpr std::chrono::milliseconds retryInterval{5};
constexpr std::uint32_t longestResources = 1 << 16;  // 32-bit words

std::vector<Rectangle> monitorsOf(const Display& display) {
  std::vector<Rectangle> monitors;
  if (display.has(xcb_randr_id)) {
    const auto answer = reply(display, xcb_randr_get_monitors_reply,
                              xcb_randr_get_monitors(display.connection(), display.root(), 1));
    auto each =
        answer ? xcb_randr_get_monitors_monitors_iterator(answer.get()) : xcb_randr_monitor_info_iterator_t{};
    for (; each.rem; xcb_randr_monitor_info_next(&each))
      monitors.push_back({each.data->x, each.data->y, each.data->width, each.data->height});
  }
  // Where the server names none, or leaves a gap between them, the screen stands for one.
  monitors.push_back({0, 0, display.size().width, display.size().height});
  return monitors;
}

Metrics metricsOf(const Display& display) {
  const auto resources =
      reply(display, xcb_get_property_reply,
            xcb_get_property(display.connection(), 0, display.root(), XCB_ATOM_RESOURCE_MANAGER,
                             XCB_ATOM_STRING, 0, longestResources));
  if (!resources)
    return {};
  return Metrics::at(
      scaleFromResources({static_cast<const char*>(xcb_get_property_value(resources.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(resources.get()))}));
}

Point pointerOf(const Display& display) {
  const auto pointer =
      reply(display, xcb_query_pointer_reply, xcb_query_pointer(display.connection(), display.root()));
  return pointer ? Point{pointer->root_x, pointer->root_y} : Point{};
}

using Clock = std::chrono::steady_clock;

/// The selection on the screen, from the first picture to the last gesture.
class Session {
 public:
  Session(const Display& used, Input& taken, Overlay& shown, Language language)
      : display(used),
        input(taken),
        overlay(shown),
        selection(display.size(), shownWindows(display), pointerOf(display)),
        monitors(monitorsOf(display)),
        isGranted(input.settle()) {
    overlay.setMetrics(metricsOf(display));
    hint.emplace(language, monitorUnder(selection.pointer()), overlay.metrics());
    crosshair = overlay.makeCursor(drawCrosshair(overlay.metrics()));
    camera = overlay.makeCursor(drawCamera(overlay.metrics()));
    input.setCursor(crosshair);
  }

  /// Returns when the selection has ended or the connection is lost.
  void run() {
    pollfd waiting{xcb_get_file_descriptor(display.connection()), POLLIN, 0};
    auto lastAttempt = Clock::now();
    while (true) {
      while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(display.connection())})
        handle(*event);
      if (selection.outcome() != Outcome::Open || display.isLost())
        return;
      // After a wait for the server, events may have come in with its answer: they must be seen before a wait
      // for new ones.
      if (draw()) {
        waitForServer();
      } else if (!isGranted && Clock::now() - lastAttempt >= retryInterval) {
        input.request();
        isGranted = input.settle();
        lastAttempt = Clock::now();
      } else {
        display.flush();
        poll(&waiting, 1, longestWait());
      }
    }
  }

  Selection& result() { return selection; }

 private:
  [[nodiscard]] Rectangle monitorUnder(Point point) const {
    return *std::ranges::find_if(monitors, [&](const Rectangle& each) { return each.contains(point); });
  }

  [[nodiscard]] Hint::Duration sinceStart() const {
    return std::chrono::duration_cast<Hint::Duration>(Clock::now() - start);
  }

  /// For poll(): in milliseconds, -1 for ever.
  [[nodiscard]] int longestWait() const {
    const auto hintChange = hint ? Hint::nextChange(sinceStart()) : std::nullopt;
    if (!isGranted)
      return static_cast<int>(retryInterval.count());
    return hintChange ? static_cast<int>(hintChange->count()) : -1;
  }

  void handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) == XCB_EXPOSE) {
      const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
      overlay.repaint({exposed.x, exposed.y, exposed.width, exposed.height});
      return;
    }
    input.deliver(event, selection);
  }

  /// Shows what the gestures so far led to; false if there was nothing new.
  bool draw() {
    Scene scene = sceneOf(selection, monitors, overlay.metrics());
    if (selection.isDragging())
      hint.reset();  // who drags has got by without it
    if (hint)
      scene.hint = hint->at(sinceStart());
    if (scene == overlay.shown())
      return false;
    if (scene.mode != overlay.shown().mode)
      input.setCursor(scene.mode == Mode::Window ? camera : crosshair);
    overlay.show(scene);
    return true;
  }

  /// Until it has finished drawing. The gestures of that time then become one step, however many they are.
  void waitForServer() const {
    (void)reply(display, xcb_get_input_focus_reply, xcb_get_input_focus(display.connection()));
  }

  const Display& display;
  Input& input;
  Overlay& overlay;
  Selection selection;
  const std::vector<Rectangle> monitors;
  const Clock::time_point start = Clock::now();
  std::optional<Hint> hint;
  bool isGranted;
  xcb_cursor_t crosshair = XCB_CURSOR_NONE;
  xcb_cursor_t camera = XCB_CURSOR_NONE;
};

/// Says why there is no picture, unless the whole X server is gone, which is then the reason.
std::nullopt_t failure(const Display& display, const char* reason) {
  std::fprintf(stderr, "screencapture: %s\n", display.isLost() ? "lost the X server" : reason);
  return std::nullopt;
}

}  // namespace

std::optional<platform::PngFile> captureInteractively(const Display& display, Language language) {
  // Three turns of the server lead to the frozen picture: which extensions it has, what they offer, done.
  xcb_prefetch_extension_data(display.connection(), &xcb_render_id);
  Input input(display);
  const FrozenScreen frozen(display);
  if (!display.has(xcb_render_id))
    return failure(display, "the X server lacks the RENDER extension");
  input.prepare();
  input.request();
  const auto answer = reply(display, xcb_render_query_pict_formats_reply,
                            xcb_render_query_pict_formats(display.connection()));
  const auto formats = answer ? DrawingFormats::from(*answer, display.screen()) : std::nullopt;
  if (!formats)
    return failure(display, "the X server can't draw onto this screen");
  Overlay overlay(display, frozen, *formats, language);
  overlay.show();
  xcb_prefetch_extension_data(display.connection(), &xcb_randr_id);

  Session session(display, input, overlay, language);
  session.run();
  overlay.hide();
  input.release();
  display.flush();
  if (session.result().outcome() == Outcome::Cancelled)
    return std::nullopt;
  const std::optional<Rectangle> part = session.result().selected();
  auto png = part && !display.isLost() ? frozen.encode(*part) : std::nullopt;
  return png ? std::move(png) : failure(display, "the picture can't be fetched");
}

}  // namespace screencapture
