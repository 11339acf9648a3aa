#include "tests/support/ScratchHome.h"
#include "tools/accelerators/CustomPlaces.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

/// A machine with these schemas alone, whose settings lie in a plain file.
class AcceleratorsTool : public ::testing::Test {
 protected:
  AcceleratorsTool() {
    variables.insert(u"XDG_DATA_DIRS"_s, home.path(u"nothing"_s));
    variables.insert(u"GSETTINGS_SCHEMA_DIR"_s, home.path(u"schemas"_s));
    variables.insert(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
  }

  void install(const QByteArray& schemas) {
    home.write(u"schemas/some.gschema.xml"_s, "<schemalist>" + schemas + "</schemalist>");
    ASSERT_EQ(QProcess::execute(u"glib-compile-schemas"_s, {home.path(u"schemas"_s)}), 0);
  }
  void set(const QByteArray& settings) { home.write(u".config/glib-2.0/settings/keyfile"_s, settings); }

  struct Answer {
    int status = 0;
    QString output;
  };
  Answer run(const QStringList& arguments) const {
    QProcess tool;
    tool.setProcessEnvironment(variables);
    tool.start(QStringLiteral(SORREL_ACCELERATORS), arguments);
    EXPECT_TRUE(tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit);
    EXPECT_EQ(tool.readAllStandardError(), QByteArray());
    return {tool.exitCode(), QString::fromUtf8(tool.readAllStandardOutput())};
  }
  QStringList read(const QString& desktop) const {
    return run({desktop}).output.split(u'\n', Qt::SkipEmptyParts);
  }
  QByteArray stored() const {
    QFile file(home.path(u".config/glib-2.0/settings/keyfile"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  const testing_support::ScratchHome home;
  QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
};

TEST_F(AcceleratorsTool, PrintsTheTextsOfADesktopsHotKeys) {
  EXPECT_EQ(read(u"gnome"_s), QStringList()) << "nothing is installed";
  install(R"(
    <schema id="org.gnome.desktop.wm.keybindings" path="/org/gnome/desktop/wm/keybindings/">
      <key name="close" type="as"><default>['&lt;Alt&gt;F4', '&lt;Super&gt;q']</default></key>
      <key name="raise" type="as"><default>[]</default></key>
      <key name="delay" type="i"><default>5</default></key>
    </schema>
    <schema id="org.gnome.settings-daemon.plugins.media-keys" path="/org/gnome/settings-daemon/plugins/media-keys/">
      <key name="custom-keybindings" type="as"><default>[]</default></key>
      <key name="logout" type="s"><default>'&lt;Control&gt;&lt;Alt&gt;Delete'</default></key>
    </schema>
    <schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
      <key name="binding" type="s"><default>''</default></key>
    </schema>
    <schema id="org.mate.control-center.keybinding">
      <key name="binding" type="s"><default>''</default></key>
    </schema>)");
  EXPECT_EQ(read(u"gnome"_s), QStringList({u"<Alt>F4"_s, u"<Super>q"_s, u"<Control><Alt>Delete"_s}));
  set("[org/gnome/desktop/wm/keybindings]\nclose=['<Super>w']\n"
      "[org/gnome/settings-daemon/plugins/media-keys]\nlogout=''\n"
      "custom-keybindings=['/custom/one/', '/no/slash', '//', 'relative/', '']\n"
      "[custom/one]\nbinding='<Super>t'\n"
      "[org/mate/desktop/keybindings/custom7]\nbinding='<Mod4>e'\n");
  const QStringList changed = read(u"gnome"_s);
  EXPECT_EQ(changed.first(), u"<Super>w"_s);
  EXPECT_EQ(changed.last(), u"<Super>t"_s);
  EXPECT_FALSE(changed.contains(u"<Alt>F4"_s));
  EXPECT_EQ(read(u"mate"_s), QStringList({u"<Mod4>e"_s}));
}

TEST_F(AcceleratorsTool, AddsCustomKeysToGnomesAndTakesThemBack) {
  EXPECT_EQ(run({u"gnome-can-add"_s}).status, 1) << "nothing is installed";
  EXPECT_EQ(run({u"gnome-set"_s}).status, 1);
  install(R"(
    <schema id="org.gnome.settings-daemon.plugins.media-keys" path="/org/gnome/settings-daemon/plugins/media-keys/">
      <key name="custom-keybindings" type="as"><default>[]</default></key>
    </schema>
    <schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
      <key name="name" type="s"><default>''</default></key>
      <key name="command" type="s"><default>''</default></key>
      <key name="binding" type="s"><default>''</default></key>
    </schema>)");
  EXPECT_EQ(run({u"gnome-can-add"_s}).status, 0);
  const QByteArray users =
      "[org/gnome/settings-daemon/plugins/media-keys]\ncustom-keybindings=['/custom/one/', 'odd']\n\n"
      "[custom/one]\nname='Mine'\nbinding='<Super>t'\n";
  set(users);
  ASSERT_EQ(run({u"gnome-set"_s, u"capture"_s, u"Sorrel: Capture"_s, u"'/a b/sorrel' --capture"_s,
                 u"<Alt><Shift>s"_s, u"history"_s, u"기록"_s, u"sorrel --history"_s, u"<Alt><Shift>f"_s})
                .status,
            0);
  const QByteArray folder = "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/sorrel-";
  EXPECT_TRUE(stored().contains("custom-keybindings=['/custom/one/', 'odd', '" + folder + "capture/', '" +
                                folder + "history/']"))
      << stored().constData();
  EXPECT_TRUE(stored().contains("command=\"'/a b/sorrel' --capture\"")) << stored().constData();
  EXPECT_EQ(read(u"gnome"_s),
            QStringList({u"/custom/one/"_s, u"odd"_s, QString::fromUtf8(folder) + u"capture/"_s,
                         QString::fromUtf8(folder) + u"history/"_s, u"<Super>t"_s}))
      << "ours don't count as taken";

  ASSERT_EQ(run({u"gnome-set"_s, u"history"_s, u"History"_s, u"sorrel --history"_s, u"<Super>h"_s}).status,
            0);
  EXPECT_FALSE(stored().contains("--capture")) << stored().constData();
  ASSERT_EQ(run({u"gnome-set"_s}).status, 0);
  EXPECT_TRUE(stored().startsWith(users.trimmed())) << stored().constData();
  EXPECT_FALSE(stored().contains("command=")) << stored().constData();
}

TEST(CustomPlaces, LeaveTheOthersAsAndWhereTheyAre) {
  using List = std::vector<std::string>;
  const std::string s = ownPlace("s"), f = ownPlace("f");
  EXPECT_EQ(withOwnPlaces({"/x/", "", "/x/", s, "/y"}, {"f", "s"}), (List{"/x/", "", "/x/", s, "/y", f}));
  EXPECT_EQ(withOwnPlaces({s, "/x/", f, s}, {"s"}), (List{s, "/x/"}));
  EXPECT_EQ(withOwnPlaces({"/x/", s}, {}), (List{"/x/"}));
}

}  // namespace
