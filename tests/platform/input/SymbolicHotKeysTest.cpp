#include "platform/base/Environment.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/SymbolicHotKeys.h"
#include "platform/input/X11HotKeyService.h"
#include "platform/x11/X11Connection.h"
#include "tests/platform/input/X11Fixture.h"
#include "tests/support/ScratchHome.h"

#include <algorithm>
#include <linux/input-event-codes.h>
#include <xcb/xinput.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

bool holds(const std::vector<SymbolicHotKey>& all, qint64 keyCode, qint64 modifiers) {
  return std::ranges::find(all, SymbolicHotKey{true, keyCode, modifiers}) != all.end();
}

/// Another program that grabs a key as some window managers do, by the newer of the server's two ways.
class XinputProgram {
 public:
  XinputProgram(int evdevCode, uint32_t modifiers)
      : connection(xcb_connect(testing_support::privateDisplay().c_str(), nullptr)) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    xcb_discard_reply(connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2).sequence);
    const auto cookie = xcb_input_xi_passive_grab_device(
        connection.get(), XCB_CURRENT_TIME, root, XCB_CURSOR_NONE,
        static_cast<uint32_t>(evdevCode + x11KeycodeOffset), 3, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &events,
        &modifiers);
    EXPECT_TRUE(xcbReply(connection.get(), xcb_input_xi_passive_grab_device_reply, cookie));
  }

 private:
  const XcbConnection connection;
};

TEST(SymbolicHotKeys, AreTheDesktopsAndTheOtherPrograms) {
  const testing_support::ScratchHome home;
  const auto service = std::make_shared<X11HotKeyService>(x11Connection());
  Environment::provide<HotKeyService>(service);
  Environment::provide(symbolicHotKeysOfDesktop());
  qputenv("XDG_CONFIG_DIRS", home.path(u"etc"_s).toUtf8());
  qputenv("XDG_CURRENT_DESKTOP", "XFCE");
  EXPECT_TRUE(copySymbolicHotKeys().empty());

  ASSERT_TRUE(service->registerHotKey({KeyCode::d, 0x800, {1, 1}, {}, {}, {}}));
  testing_support::Screen other(testing_support::privateDisplay());
  ASSERT_TRUE(other.grabKey(KEY_F4, XCB_MOD_MASK_1));
  ASSERT_TRUE(other.grabKey(KEY_D, XCB_MOD_MASK_CONTROL)) << "a key of which we have another combination";
  const XinputProgram third(KEY_F9, XCB_MOD_MASK_CONTROL);
  home.write(u".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"_s,
             R"(<channel><property name="xfwm4" type="empty"><property name="default" type="empty">
                <property name="&lt;Alt&gt;F4" type="string" value="close"/>
                <property name="&lt;Super&gt;d" type="string" value="show_desktop_key"/>)");
  const auto all = copySymbolicHotKeys();
  EXPECT_EQ(all.size(), 4U) << "each once, and no hot key of our own";
  EXPECT_TRUE(holds(all, KeyCode::f4, 0x800));
  EXPECT_TRUE(holds(all, KeyCode::f9, 0x1000));
  EXPECT_TRUE(holds(all, KeyCode::d, 0x1000));
  EXPECT_TRUE(holds(all, KeyCode::d, 0x100));
  EXPECT_TRUE(other.isKeyGrabbed(KEY_D, XCB_MOD_MASK_1)) << "our own stays";
  EXPECT_FALSE(other.isKeyGrabbed(KEY_E, XCB_MOD_MASK_1)) << "what was tried is given back";

  qputenv("XDG_CURRENT_DESKTOP", "openbox");
  EXPECT_EQ(copySymbolicHotKeys().size(), 3U) << "only the desktop that runs is read";
  qunsetenv("XDG_CURRENT_DESKTOP");
  qunsetenv("XDG_CONFIG_DIRS");
}

}  // namespace
}  // namespace platform
