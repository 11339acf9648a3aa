// From the start of the program to its icon in the tray, and what it costs to keep it there, against the
// smallest tray program that the same toolkit allows. The tray is this program itself: it sees the very
// request to be embedded.

#include "app/capture/AppPaths.h"
#include "bench/Figures.h"
#include "bench/Running.h"
#include "platform/system/Xcb.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <chrono>
#include <cstdlib>
#include <linux/input-event-codes.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <xcb/xcb.h>

namespace {

using bench::Running;

/// The owner of the tray's selection on a display.
class Tray {
 public:
  explicit Tray(const std::string& display) : connection(xcb_connect(display.c_str(), nullptr)) {
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 400, 24, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, window, atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
  }
  ~Tray() { xcb_disconnect(connection); }
  Tray(const Tray&) = delete;
  Tray& operator=(const Tray&) = delete;

  /// Waits for an icon's request to be embedded.
  void waitForIcon() const {
    for (;;) {
      const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(xcb_wait_for_event(connection),
                                                                             std::free);
      if (!event)
        throw std::runtime_error("the display is gone");
      const auto* const message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
      if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message->type == opcode)
        return;
    }
  }

 private:
  xcb_atom_t atom(const std::string& name) const { return platform::x11Atom(connection, name); }

  xcb_connection_t* connection;
  xcb_window_t window = 0;
  xcb_atom_t opcode = 0;
};

double secondsToIcon(const Tray& tray, const QString& program) {
  const auto start = std::chrono::steady_clock::now();
  const Running running(program);
  tray.waitForIcon();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double settledMemory(const Tray& tray, const QString& program) {
  const Running running(program);
  tray.waitForIcon();
  std::this_thread::sleep_for(std::chrono::seconds(2));
  return running.proportionalSetSize();
}

/// Opens the panel with a picture in it, lets the picture load, and closes the panel.
void lookAtPanel(const std::string& display) {
  const testing_support::Screen screen(display);
  testing_support::XTestInput hand(display);
  const auto press = [&] {
    hand.pressKey(KEY_LEFTALT);
    hand.pressKey(KEY_LEFTSHIFT);
    hand.tapKey(KEY_F);
    hand.releaseKey(KEY_LEFTSHIFT);
    hand.releaseKey(KEY_LEFTALT);
  };
  const auto isOpen = [&] {
    const auto window = screen.find(QStringLiteral("sorrel"));
    return window && window->area.height() > 400;
  };
  testing_support::until("the hot key is there",
                         [&] { return screen.isKeyGrabbed(KEY_F, XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT); });
  press();
  testing_support::until("the panel is open", isOpen);
  std::this_thread::sleep_for(std::chrono::seconds(1));
  press();
  testing_support::until("the panel is closed", [&] { return !isOpen(); });
}

double sleepsIn30Seconds(const Tray& tray, const QString& program, const std::function<void()>& use) {
  const Running running(program);
  tray.waitForIcon();
  return running.sleepsIn30Seconds(use);
}

}  // namespace

int main(int argc, char** argv) {
  const testing_support::ScratchHome home;
  const QCoreApplication application(argc, argv);
  const testing_support::XvfbServer server(1440, 900);
  qputenv("DISPLAY", server.display().c_str());
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  const Tray tray(server.display());

  const QDir programs(QCoreApplication::applicationDirPath());
  const QString program = programs.filePath(QStringLiteral("../bin/sorrel"));
  const QString smallest = programs.filePath(QStringLiteral("references/smallest_tray"));
  bench::Figures figures(argc, argv);
  figures.add(bench::MeasuredRatio{"start to status item, against the smallest tray program",
                                   [&] { return secondsToIcon(tray, program); },
                                   [&] { return secondsToIcon(tray, smallest); }, 1.5, 21});
  figures.add(bench::MeasuredRatio{"idle memory (PSS), against the smallest tray program",
                                   [&] { return settledMemory(tray, program); },
                                   [&] { return settledMemory(tray, smallest); }, 1.3, 3});
  figures.add(bench::Amount{"wake-ups in 30 idle seconds",
                            [&] { return sleepsIn30Seconds(tray, program, [] {}); }, "", 2});
  figures.add(bench::Amount{"wake-ups in 30 idle seconds after the panel was open",
                            [&] {
                              QImage picture(2880, 1800, QImage::Format_RGB32);
                              picture.fill(Qt::red);
                              picture.save(sorrel::AppPaths::bottleDirectory().toLocalFile() +
                                           QStringLiteral("red.png"));
                              return sleepsIn30Seconds(tray, program, [&] { lookAtPanel(server.display()); });
                            },
                            "", 2});
  return figures.run();
}
