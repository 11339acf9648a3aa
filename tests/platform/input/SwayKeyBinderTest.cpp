#include "platform/input/KeyCodes.h"
#include "platform/input/XkbKeymap.h"
#include "platform/input/wayland/SwayBindings.h"
#include "platform/input/wayland/SwayKeyBinder.h"
#include "tests/platform/input/SwayDouble.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing::ElementsAre;
using testing_support::until;

namespace {

constexpr quint32 altShift = 0xA00;

HotKey hotKey(int keyCode, const QString& name) {
  HotKey key;
  key.keyCode = static_cast<quint32>(keyCode);
  key.modifiers = altShift;
  key.name = name;
  return key;
}

class SwayKeyBinderTest : public testing::Test {
 protected:
  SwayKeyBinderTest() { UserDefaults::standard().set(hotKeysMayBeBound, true); }

  KeyBinder::Listener listener() {
    return {[this](KeyAction action, const QString& name) {
              heard << (action == KeyAction::Press ? u'+' : u'-') + name;
            },
            [this] { ++changes; }, [this] { isUnavailable = true; }};
  }
  void untilBound(const QStringList& keys) {
    until("the keys are bound", [&] { return sway.bindings.keys() == keys; });
  }

  const testing_support::ScratchHome home;
  testing_support::SwayDouble sway;
  QStringList heard;
  int changes = 0;
  bool isUnavailable = false;
  std::optional<SwayKeyBinder> binder{std::in_place, sway.socketPath(), listener()};
};

const QStringList boundS{u"--release Mod1+Shift+39"_s, u"Mod1+Shift+39"_s};

TEST_F(SwayKeyBinderTest, BindsPositionsAndTellsOfPressAndRelease) {
  binder->bind({hotKey(KeyCode::s, u"capture"_s)});
  untilBound(boundS);
  EXPECT_EQ(binder->state(), (HotKeyState{HotKeyWay::Sway, {}, {}}));
  sway.press(u"Mod1+Shift+39"_s);
  sway.press(u"--release Mod1+Shift+39"_s);
  sway.sendEvent(5, R"({"binding":{"command":"exec foot"}})");
  sway.sendEvent(5, "junk");
  until("both are heard", [&] { return heard.size() >= 2; });
  EXPECT_EQ(heard, (QStringList{u"+capture"_s, u"-capture"_s}));

  binder->bind({hotKey(KeyCode::f, u"history"_s)});
  untilBound({u"--release Mod1+Shift+41"_s, u"Mod1+Shift+41"_s});
  sway.reload();
  untilBound({u"--release Mod1+Shift+41"_s, u"Mod1+Shift+41"_s});
  binder.reset();
  untilBound({});
}

TEST_F(SwayKeyBinderTest, BindsOnlyWhileTheUserAgrees) {
  UserDefaults::standard().set(hotKeysMayBeBound, false);
  binder->bind({hotKey(KeyCode::s, u"capture"_s)});
  until("the configuration is read", [&] { return changes > 1; });
  EXPECT_TRUE(sway.bindings.isEmpty());
  UserDefaults::standard().set(hotKeysMayBeBound, true);
  untilBound(boundS);
  UserDefaults::standard().set(hotKeysMayBeBound, false);
  untilBound({});
}

TEST_F(SwayKeyBinderTest, LeavesTheUsersOwnKeysAlone) {
  sway.configuration = "bindsym Mod1+Shift+s exec mine\n";
  binder->bind({hotKey(KeyCode::s, u"capture"_s), hotKey(KeyCode::f, u"history"_s)});
  untilBound({u"--release Mod1+Shift+41"_s, u"Mod1+Shift+41"_s});
  EXPECT_EQ(binder->state().taken, QStringList{u"capture"_s});
  EXPECT_EQ(binder->takenByOthers().size(), 1U);

  sway.configuration.clear();
  sway.reload();
  untilBound(
      {u"--release Mod1+Shift+39"_s, u"--release Mod1+Shift+41"_s, u"Mod1+Shift+39"_s, u"Mod1+Shift+41"_s});
  EXPECT_TRUE(binder->state().taken.isEmpty());
}

TEST_F(SwayKeyBinderTest, IsUnavailableWithoutSwayAndWhenItSpeaksAnotherTongue) {
  SwayKeyBinder nobodys("/nowhere/sway.sock", listener());
  EXPECT_FALSE(isUnavailable) << "never before the constructor has returned";
  until("it is told", [&] { return isUnavailable; });

  for (const QByteArray& junk :
       {QByteArray("HTTP/1.1 400 Bad Request"), QByteArray("i3-ipc\xff\xff\xff\xff\x09\0\0\0", 14)}) {
    isUnavailable = false;
    binder.emplace(sway.socketPath(), listener());
    binder->bind({});
    until("the configuration is read", [&, before = changes] { return changes > before; });
    sway.sendJunk(junk);
    until("it is told", [&] { return isUnavailable; });
  }
  isUnavailable = false;
  binder.emplace(sway.socketPath(), listener());
  binder->bind({});
  until("the configuration is read", [&, before = changes] { return changes > before; });
  sway.hangUp();
  until("it is told", [&] { return isUnavailable; });
}

std::vector<std::pair<qint64, qint64>> read(const QByteArray& configuration) {
  const XkbContext context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
  const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
  const XkbKeymap keymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
  std::vector<std::pair<qint64, qint64>> found;
  for (const auto& key : swayBindings(configuration, KeySymbols(keymap.get()), [](const QString& pattern) {
         return std::vector<QByteArray>{pattern == u"config.d/*" ? "bindsym F2 exec included\n}\n" : ""};
       }))
    found.emplace_back(key.keyCode, key.modifiers);
  return found;
}

TEST(SwayBindingsTest, ReadsWhatTheDefaultModeBinds) {
  using Key = std::pair<qint64, qint64>;
  EXPECT_THAT(read(R"(
# bindsym F1 a comment
set $mod Mod4
set $mode_system Lock
  bindsym --to-code --no-warn $mod+Shift+Print exec grim
bindcode --release Mod1+Control+39 exec by code
bindsym $mod+exclam workspace 1
bindsym {
    $mod+a exec in a block
    $mod+b exec another
}
mode "$mode_system" {
    bindsym s exec not now
}
bar {
    bindsym button1 nop
    colors {
        background #000000
    }
}
bindsym \
    Ctrl+alt+Delete exec long
include config.d/*
bindsym a+b exec two at once
bindsym $unknown+q nop
bindsym
bindsym $mod+Shift+print exec again
)"),
              ElementsAre(Key(KeyCode::printScreen, 0x300), Key(KeyCode::s, 0x1800), Key(KeyCode::one, 0x300),
                          Key(KeyCode::a, 0x100), Key(KeyCode::b, 0x100), Key(KeyCode::deleteForward, 0x1800),
                          Key(KeyCode::f2, 0)));
}

TEST(SwayBindingsTest, FindsIncludedFilesBesideTheConfiguration) {
  const testing_support::ScratchHome home;
  home.write(u"sway/config.d/b"_s, "b");
  home.write(u"sway/config.d/a"_s, "a");
  const SwayIncludes includes = swayIncludesOf(home.path(u"sway/config"_s));
  EXPECT_THAT(includes(u"config.d/*"_s), ElementsAre("a", "b"));
  EXPECT_THAT(includes(u"~/sway/config.d/a"_s), ElementsAre("a"));
  EXPECT_THAT(includes(u"$(date)/*"_s), ElementsAre());
}

}  // namespace
