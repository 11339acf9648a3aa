#include "tests/support/ScratchHome.h"

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

  QStringList read(const QString& desktop) const {
    QProcess tool;
    tool.setProcessEnvironment(variables);
    tool.start(QStringLiteral(SORREL_ACCELERATORS), {desktop});
    EXPECT_TRUE(tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit);
    EXPECT_EQ(tool.readAllStandardError(), QByteArray());
    return QString::fromUtf8(tool.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
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

}  // namespace
