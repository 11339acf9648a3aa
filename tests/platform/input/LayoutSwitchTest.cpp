#include "platform/input/LayoutSwitch.h"
#include "tests/platform/input/X11Fixture.h"
#include "tests/support/LogCapture.h"

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using testing_support::setLayout;

constexpr auto control = HotKeyModifier::Control;
constexpr auto option = HotKeyModifier::Option;
constexpr auto shift = HotKeyModifier::Shift;
constexpr auto command = HotKeyModifier::Command;

TEST(LayoutSwitch, FollowsTheKeyboard) {
  testing_support::EventLog events;
  testing_support::LogCapture log;
  int news = 0;
  const auto layoutSwitch = LayoutSwitch::forDesktop();
  const Subscription listening = layoutSwitch->observe([&] { ++news; });
  events.settle();
  EXPECT_FALSE(layoutSwitch->takes(option | shift));
  struct {
    QString option;
    HotKeyModifiers taken;
  } const rows[] = {{u"grp:alt_shift_toggle"_s, option | shift},
                    {u"grp:lalt_lshift_toggle"_s, option | shift},
                    {u"grp:ctrl_shift_toggle"_s, control | shift},
                    {u"grp:ctrl_alt_toggle"_s, control | option},
                    {u"grp:rctrl_rshift_toggle"_s, {}},  // the left keys are free
                    {u"grp:win_space_toggle"_s, {}},
                    {u"ctrl:swapcaps,grp:ctrl_shift_toggle"_s, {}}};  // which leaves both to the left hand
  for (const auto& row : rows) {
    setLayout(u"us,kr"_s, row.option);
    events.settle();
    for (const HotKeyModifiers pair : {option | shift, control | shift, control | option, control | command,
                                       option | command, shift | command})
      EXPECT_EQ(layoutSwitch->takes(pair), pair == row.taken)
          << qPrintable(row.option) << ' ' << pair.toInt();
    EXPECT_EQ(layoutSwitch->takes(row.taken | control | option | shift), row.taken != HotKeyModifiers());
    for (const HotKeyModifier single : {control, option, shift, command})
      EXPECT_FALSE(layoutSwitch->takes(single));
  }
  EXPECT_EQ(
      log.logged,
      QStringList(
          {u"Sorrel hot keys: Alt+Shift changes the keyboard's layout, so hot keys with it don't arrive"_s,
           u"Sorrel hot keys: Ctrl+Shift changes the keyboard's layout, so hot keys with it don't arrive"_s,
           u"Sorrel hot keys: Ctrl+Alt changes the keyboard's layout, so hot keys with it don't arrive"_s}));
  EXPECT_EQ(news, 4);
  setLayout(u"us"_s);
}

}  // namespace
}  // namespace platform
