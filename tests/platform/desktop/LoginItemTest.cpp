#include "platform/desktop/DesktopEntry.h"
#include "platform/desktop/LoginItem.h"
#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::until;

namespace {

/// Two folders stand for the system's.
class LoginItemTest : public testing::Test {
 protected:
  LoginItemTest() {
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(home.path(u"a"_s) + u':' + home.path(u"b"_s)));
  }
  ~LoginItemTest() override { qputenv("XDG_CONFIG_DIRS", before); }

  const QByteArray before = qgetenv("XDG_CONFIG_DIRS");
  testing_support::ScratchHome home;
  const QString own = u".config/autostart/org.sorrel.Sorrel.desktop"_s;
  int changes = 0;
};

TEST_F(LoginItemTest, TheUsersEntryGoesBeforeTheSystemsAndABadOneIsOff) {
  const QByteArray on = "[Desktop Entry]\nExec=sorrel\n", hidden = on + "Hidden = true\n";
  const struct {
    QByteArray own, first, second;
    bool isEnabled;
  } rows[] = {
      {{}, {}, {}, false},
      {on, {}, {}, true},
      {hidden, {}, {}, false},
      {"Exec=sorrel\n", {}, {}, false},
      {"[Desktop Entry]\nName=Sorrel\n", on, {}, false},
      {"[Other]\nExec=sorrel\n", {}, {}, false},
      {QByteArray("\0\xff\n", 3), on, {}, false},
      {on + "X-GNOME-Autostart-enabled=false\n", on, {}, false},
      {on + "TryExec=/nowhere/sorrel\n", {}, {}, false},
      {on + "TryExec=sh\n[Desktop Action x]\nHidden=true\n", {}, {}, true},
      {{}, on, {}, true},
      {{}, {}, on, true},
      {{}, hidden, on, false},
      {hidden, on, on, false},
      {on, hidden, {}, true},
  };
  const LoginItem item([] {});
  for (const auto& row : rows) {
    for (const auto& [path, contents] :
         {std::pair(own, row.own), std::pair(u"a/autostart/org.sorrel.Sorrel.desktop"_s, row.first),
          std::pair(u"b/autostart/org.sorrel.Sorrel.desktop"_s, row.second)}) {
      QFile::remove(home.path(path));
      if (!contents.isEmpty())
        home.write(path, contents);
    }
    EXPECT_EQ(item.isEnabled(), row.isEnabled) << (row.own + '|' + row.first + '|' + row.second).data();
    LoginItem switched([] {});
    for (const bool isWanted : {true, false}) {
      EXPECT_TRUE(switched.setEnabled(isWanted));
      EXPECT_EQ(item.isEnabled(), isWanted) << (row.own + '|' + row.first + '|' + row.second).data();
    }
    const bool isNeeded = !row.first.contains("Hidden") && !(row.first + row.second).isEmpty();
    EXPECT_EQ(QFile::exists(home.path(own)), isNeeded) << "no more than what says otherwise than the system";
  }
}

TEST_F(LoginItemTest, ChangesOfOthersAreHeardAlsoInANewFolder) {
  home.write(u".config/some.conf"_s);
  const LoginItem item([&] { ++changes; });
  home.write(own, "[Desktop Entry]\nExec=sorrel\n");
  until("the new folder is heard", [&] { return changes > 0 && item.isEnabled(); });
  changes = 0;
  QFile::remove(home.path(own));
  until("the removal is heard", [&] { return changes > 0; });
}

TEST_F(LoginItemTest, AFailureIsTold) {
  home.write(u".config/autostart"_s, "no folder");
  LoginItem item([] {});
  EXPECT_FALSE(item.setEnabled(true));
  EXPECT_FALSE(item.isEnabled());
}

TEST_F(LoginItemTest, ACommandIsStartedWhateverItsName) {
  for (const QString& name : {u"a b"_s, uR"(c"$HOME`\t\\ 'd')"_s}) {
    const QString program = home.write(u"bin/"_s + name, "#!/bin/sh\necho started > \"$0.mark\"\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QString entry = home.write(u"x.desktop"_s, "[Desktop Entry]\nType=Application\nName=X\nExec=" +
                                                         DesktopEntry::quotedWord(program).toUtf8() + '\n');
    // Another reader of such files.
    testing_support::Program launcher({u"gio"_s, u"launch"_s, entry},
                                      QProcessEnvironment::systemEnvironment());
    ASSERT_EQ(launcher.waitForEnd(), 0) << launcher.errors().data();
    until("it is started", [&] { return QFile::exists(program + u".mark"_s); });
  }
}

}  // namespace
