#include "platform/input/KeyCodes.h"
#include "platform/input/wayland/BoundHotKeyService.h"
#include "platform/input/wayland/SwayKeyBinder.h"
#include "platform/input/wayland/WaylandKeyboard.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::SwaySession;
using testing_support::until;

namespace {

constexpr quint32 altShift = 0xA00;

/// A held key is told of fifty times a second.
constexpr char quickRepeat[] = "input * repeat_delay 40\ninput * repeat_rate 50\n";

class SwayTest : public testing::Test {
 protected:
  SwayTest() {
    UserDefaults::standard().set(hotKeysMayBeBound, true);
    EXPECT_TRUE(service->installEventHandler({[this](const HotKeyEvent& event) {
                                                heard += event.action == KeyAction::Press ? u'+' : u'-';
                                                return KeyOutcome::Taken;
                                              },
                                              [](const RawKeyEvent&) { return KeyOutcome::Passed; }}));
    service->listen(HotKeyService::Keys::Grabbed);
  }

  void add(int keyCode, const QString& name) {
    EXPECT_TRUE(service->registerHotKey({static_cast<quint32>(keyCode), altShift, {1, 1}, name, {}, {}}));
  }
  void turn(bool isDown, int key) {
    auto& input = session.input();
    for (const int each : {KEY_LEFTALT, KEY_LEFTSHIFT, key})
      isDown ? input.pressKey(each) : input.releaseKey(each);
  }
  /// Presses until the binding is there, which sway doesn't tell of.
  void untilHeard(int key) {
    heard.clear();
    until("the hot key is heard", [&] {
      if (heard.isEmpty()) {
        turn(true, key);
        turn(false, key);
      }
      return heard.endsWith(u'-');
    });
  }

  SwaySession session{{.configuration = QByteArray(quickRepeat) + "bindsym Mod1+Shift+d nop mine\n"}};
  QString heard;
  int told = 0;  // presses, as sway tells of them
  std::unique_ptr<BoundHotKeyService> service = std::make_unique<BoundHotKeyService>(
      std::vector<BoundHotKeyService::Way>{[this](KeyBinder::Listener listener) {
        const auto onKey = std::move(listener.onKey);
        listener.onKey = [this, onKey](KeyAction action, const QString& name) {
          told += action == KeyAction::Press;
          onKey(action, name);
        };
        return std::make_unique<SwayKeyBinder>(session.commandSocket().toUtf8(), std::move(listener));
      }});
};

TEST_F(SwayTest, BindsWhatIsFreeAndHearsAHeldKeyOnce) {
  add(KeyCode::s, u"capture"_s);
  add(KeyCode::d, u"edit"_s);
  untilHeard(KEY_S);
  EXPECT_EQ(service->state(), (HotKeyState{HotKeyWay::Sway, {}, {u"edit"_s}}));

  heard.clear();
  told = 0;
  turn(true, KEY_D);
  turn(false, KEY_D);
  turn(true, KEY_S);
  until("the key repeats", [&] { return told > 3; });
  EXPECT_EQ(heard, u"+"_s);
  session.input().releaseKey(KEY_LEFTALT);  // before the key itself
  session.input().releaseKey(KEY_S);
  session.input().releaseKey(KEY_LEFTSHIFT);
  until("the release is heard", [&] { return heard == u"+-"_s; });

  session.command(u"reload"_s);
  untilHeard(KEY_S);
}

TEST(WaylandKeyboardTest, PrintsWhatTheCompositorsKeymapSays) {
  const SwaySession session({.keyboardLayout = u"de"_s});
  const WaylandGlobals globals(session.display());
  const WaylandKeyboard keyboard(session.display(), globals);
  const Keyboard read = keyboard.read();
  ASSERT_TRUE(read.keymap);
  EXPECT_EQ(translationOf(read, KeyCode::z).text, u"y"_s);
  EXPECT_EQ(translationOf(read, KeyCode::semicolon).text, u"ö"_s);
}

}  // namespace
