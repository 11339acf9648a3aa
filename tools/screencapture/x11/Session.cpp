#include "tools/screencapture/x11/Session.h"

#include "tools/screencapture/x11/Resources.h"

#include <poll.h>
#include <xcb/randr.h>

namespace screencapture {

namespace {

using Clock = std::chrono::steady_clock;

// How long until input that another program holds is asked for again.
constexpr std::chrono::milliseconds retryInterval{5};
constexpr std::uint32_t longestResources = 1 << 16;  // 32-bit words

std::vector<Rectangle> monitorsOf(const Display& display) {
  const Rectangle screen{0, 0, display.size().width, display.size().height};
  std::vector<Rectangle> monitors;
  if (display.has(xcb_randr_id)) {
    const auto answer = reply(display, xcb_randr_get_monitors_reply,
                              xcb_randr_get_monitors(display.connection(), display.root(), 1));
    auto each =
        answer ? xcb_randr_get_monitors_monitors_iterator(answer.get()) : xcb_randr_monitor_info_iterator_t{};
    for (; each.rem; xcb_randr_monitor_info_next(&each)) {
      const Rectangle area{each.data->x, each.data->y, each.data->width, each.data->height};
      if (const Rectangle seen = area.intersected(screen); !seen.isEmpty())
        monitors.push_back(seen);
    }
  }
  if (monitors.empty())
    monitors.push_back(screen);
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

}  // namespace

Session::Session(Stage& used)
    : stage(used),
      begun{used.display.size(), monitorsOf(used.display), metricsOf(used.display), pointerOf(used.display)},
      isGranted(stage.input.settle()) {
}

void Session::run(Use& use) {
  const Display& display = stage.display;
  pollfd waiting{xcb_get_file_descriptor(display.connection()), POLLIN, 0};
  auto lastAttempt = Clock::now();
  while (true) {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(display.connection())})
      handle(*event, use);
    if (use.gestures().outcome() != Outcome::Open || display.isLost())
      return;
    // After a wait for the server, events may have come in with its answer: they must be seen before a wait
    // for new ones.
    if (use.draw()) {
      waitForServer();
    } else if (!isGranted && Clock::now() - lastAttempt >= retryInterval) {
      stage.input.request();
      isGranted = stage.input.settle();
      lastAttempt = Clock::now();
    } else {
      display.flush();
      poll(&waiting, 1, longestWait(use));
    }
  }
}

/// For poll(): in milliseconds, -1 for ever.
int Session::longestWait(const Use& use) const {
  if (!isGranted)
    return static_cast<int>(retryInterval.count());
  const auto change = use.nextChange();
  return change ? static_cast<int>(change->count()) : -1;
}

void Session::handle(const xcb_generic_event_t& event, Use& use) {
  if ((event.response_type & 0x7f) == XCB_EXPOSE) {
    const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
    use.repaint({exposed.x, exposed.y, exposed.width, exposed.height});
    return;
  }
  stage.input.deliver(event, use.gestures());
}

/// Until it has finished drawing. The gestures of that time then become one step, however many they are.
void Session::waitForServer() const {
  (void)reply(stage.display, xcb_get_input_focus_reply, xcb_get_input_focus(stage.display.connection()));
}

}  // namespace screencapture
