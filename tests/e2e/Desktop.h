#pragma once

#include "tests/e2e/StatusNotifierHost.h"
#include "tests/support/PrivateSession.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <memory>

namespace e2e {

using namespace testing_support;

enum class Tray { None, XEmbedAtTop, XEmbedAtBottom, StatusNotifier };
enum class Language { English, Korean };
enum class Compositor { None, Running };
/// The bar of a desktop with Tray::StatusNotifier, at the screen's upper edge and as wide as that.
constexpr int statusNotifierBarHeight = 26;
/// The second keeps windows, with all of their margins, clear of the bars.
enum class WindowManager { Openbox, Marco };
/// Whether a window gets the keyboard by appearing, or only when the user or its program says so.
enum class NewWindows { GetKeyboard, MustAsk };
enum class AssistiveTechnology { None, Listening };
/// The second composes Korean syllables from the keys' letters.
enum class InputMethod { None, Hangul };

struct DesktopOptions {
  QSize size{1024, 640};
  int depth = 24;
  Tray tray = Tray::XEmbedAtTop;
  Language language = Language::English;
  Compositor compositor = Compositor::None;
  double scale = 1;  // device pixels a point, for the programs that are started
  NewWindows newWindows = NewWindows::GetKeyboard;
  AssistiveTechnology assistiveTechnology = AssistiveTechnology::None;
  WindowManager windowManager = WindowManager::Openbox;
  InputMethod inputMethod = InputMethod::None;
};

/// A session with an X server, a window manager, and perhaps a tray.
class Desktop : public PrivateSession {
 public:
  explicit Desktop(const DesktopOptions& options = {});
  ~Desktop() override;

  /// Ends the tray that there is, and starts another.
  void changeTray(Tray tray);

  /// The compositing manager comes and goes.
  void startCompositor();
  void stopCompositor();
  /// On a desktop with an input method: from now on the keys type their own letters.
  void leaveHangul();

  /// Device pixels a point.
  [[nodiscard]] double scale() const {
    return variables.value(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("1")).toDouble();
  }
  [[nodiscard]] Screen& screen() { return *view; }
  [[nodiscard]] XTestInput& input() { return *hand; }
  /// The panel of a desktop with Tray::StatusNotifier, in a bar at the upper edge.
  [[nodiscard]] StatusNotifierHost& statusNotifier() { return *host; }

 private:
  void startOpenbox(NewWindows newWindows);
  void startMarco();
  void startTray(Tray tray);
  void startAssistiveTechnology();
  void startHangul();

  XvfbServer server;
  std::unique_ptr<Screen> view;
  std::unique_ptr<XTestInput> hand;
  std::unique_ptr<StatusNotifierHost> host;
  quint32 bar = 0;  // above the host
  std::unique_ptr<Program> windowManager;
  std::unique_ptr<Program> compositor;
  std::unique_ptr<Program> tray;
  std::unique_ptr<Program> accessibilityBus;
  std::unique_ptr<Program> inputMethod;
};

}  // namespace e2e
