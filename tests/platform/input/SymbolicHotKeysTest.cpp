#include "platform/base/Environment.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/SymbolicHotKeys.h"
#include "platform/input/X11HotKeyService.h"
#include "platform/x11/X11Connection.h"
#include "tests/platform/input/X11Fixture.h"
#include "tests/support/ScratchHome.h"

#include <algorithm>
#include <linux/input-event-codes.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

bool holds(const std::vector<SymbolicHotKey>& all, qint64 keyCode, qint64 modifiers) {
  return std::ranges::find(all, SymbolicHotKey{true, keyCode, modifiers}) != all.end();
}

TEST(SymbolicHotKeys, AreTheDesktopsAndTheOtherPrograms) {
  const testing_support::ScratchHome home;
  const auto service = std::make_shared<X11HotKeyService>(x11Connection());
  Environment::provide<HotKeyService>(service);
  Environment::provide(symbolicHotKeysOfDesktop());
  qputenv("XDG_CONFIG_DIRS", home.path(u"etc"_s).toUtf8());
  qputenv("XDG_CURRENT_DESKTOP", "XFCE");
  EXPECT_TRUE(copySymbolicHotKeys().empty());

  ASSERT_TRUE(service->registerHotKey({KeyCode::d, 0x800, {1, 1}, {}, {}}));
  testing_support::Screen other(testing_support::privateDisplay());
  ASSERT_TRUE(other.grabKey(KEY_F4, XCB_MOD_MASK_1));
  ASSERT_TRUE(other.grabKey(KEY_D, XCB_MOD_MASK_CONTROL)) << "a key of which we have another combination";
  home.write(u".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"_s,
             R"(<channel><property name="xfwm4" type="empty"><property name="default" type="empty">
                <property name="&lt;Alt&gt;F4" type="string" value="close"/>
                <property name="&lt;Super&gt;d" type="string" value="show_desktop_key"/>)");
  const auto all = copySymbolicHotKeys();
  EXPECT_EQ(all.size(), 3U) << "each once, and no hot key of our own";
  EXPECT_TRUE(holds(all, KeyCode::f4, 0x800));
  EXPECT_TRUE(holds(all, KeyCode::d, 0x1000));
  EXPECT_TRUE(holds(all, KeyCode::d, 0x100));
  EXPECT_TRUE(other.isKeyGrabbed(KEY_D, XCB_MOD_MASK_1)) << "our own stays";
  EXPECT_FALSE(other.isKeyGrabbed(KEY_E, XCB_MOD_MASK_1)) << "what was tried is given back";

  qputenv("XDG_CURRENT_DESKTOP", "openbox");
  EXPECT_EQ(copySymbolicHotKeys().size(), 2U) << "only the desktop that runs is read";
  qunsetenv("XDG_CURRENT_DESKTOP");
  qunsetenv("XDG_CONFIG_DIRS");
}

}  // namespace
}  // namespace platform
