#include "platform/base/Environment.h"
#include "platform/base/Task.h"
#include "platform/desktop/Workspace.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::contentsOf;

namespace {

class WorkspaceTest : public testing::Test {
 protected:
  testing_support::ScratchHome home;
  const QString folder = home.path(u"bottle"_s);
  const QString directoryFile = folder + u"/.directory"_s;
  const QString icons = home.path(u".local/share/Sorrel/folder-icons/"_s);
  QList<QStringList> gioCalls;
  const std::shared_ptr<TaskLauncher> replaced =
      Environment::provide(std::make_shared<TaskLauncher>([this](const Task& task, auto) -> Result<> {
        gioCalls << task.arguments;
        return {};
      }));
};

TEST_F(WorkspaceTest, AFolderGetsItsIconOnceAndKeepsItsOtherEntries) {
  home.write(u"bottle/.directory"_s, "# mine\n[Desktop Entry]\nName=병\nIcon=old\n[Other]\nIcon=kept\n");
  // The other way of telling, where the tool for it is there.
  const QString tools = home.path(u"tools"_s);
  QFile gio(home.write(u"tools/gio"_s, "#!/bin/sh\n"));
  gio.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QFile::encodeName(tools));

  EXPECT_TRUE(Workspace::setIcon(u"FolderIconFull"_s, folder));
  const QString icon = icons + u"FolderIconFull.svg"_s;
  EXPECT_EQ(contentsOf(directoryFile),
            "# mine\n[Desktop Entry]\nName=병\nIcon=" + QFile::encodeName(icon) + "\n[Other]\nIcon=kept\n");
  EXPECT_EQ(contentsOf(icon), contentsOf(u":/sorrel/images/FolderIconFull.svg"_s));
  ASSERT_EQ(gioCalls.size(), 1);
  EXPECT_EQ(gioCalls[0], QStringList({u"set"_s, folder, u"metadata::custom-icon"_s, u"file://"_s + icon}));
  EXPECT_TRUE(Workspace::setIcon(u"FolderIconFull"_s, folder));
  EXPECT_EQ(gioCalls.size(), 1) << "nothing to do the second time";
  qputenv("PATH", path);

  for (const QByteArray& before : {QByteArray(), QByteArray("[Other]\nA=b")}) {
    home.write(u"bottle/.directory"_s, before);
    EXPECT_TRUE(Workspace::setIcon(u"FolderIconFull"_s, folder));
    EXPECT_EQ(contentsOf(directoryFile), (before.isEmpty() ? before : before + '\n') +
                                             "[Desktop Entry]\nIcon=" + QFile::encodeName(icon) + '\n');
  }
  EXPECT_FALSE(Workspace::setIcon(u"NoSuchImage"_s, folder));
  EXPECT_FALSE(Workspace::setIcon(u"FolderIconFull"_s, home.path(u"missing"_s)));
}

TEST_F(WorkspaceTest, AProgramIsInstalledWhereItsDesktopEntryIs) {
  struct Case {
    const char* identifier;
    const char* entry;
    const char* contents;
    bool isInstalled;
  };
  const Case cases[] = {
      {"org.example.A", ".local/share/applications/org.example.A.desktop", "[Desktop Entry]\n", true},
      {"org.example.B", "second/applications/org.example.B.desktop", "[Desktop Entry]\nName=B\n", true},
      {"org.example.a", ".local/share/applications/org.example.A.desktop", "[Desktop Entry]\n", false},
      {"v-1-c-d", "first/applications/v-1/c/d.desktop", "[Desktop Entry]\n", true},
      {"-e", "first/applications/e.desktop", "[Desktop Entry]\n", false},
      {"f", "first/applications/sub/f.desktop", "[Desktop Entry]\n", false},
      {"g", "first/applications/g.desktop", "[Desktop Entry]\nHidden = true\n", false},
      {"h", "first/applications/h.desktop", "[Desktop Action]\nHidden=true\n[Desktop Entry]\n#Hidden=true\n",
       true},
      {"i", "first/applications/i.desktop/empty", "", false},
  };
  for (const Case& each : cases)
    home.write(QString::fromLatin1(each.entry), each.contents);
  // An earlier folder says that it is gone.
  home.write(u"second/applications/g.desktop"_s, "[Desktop Entry]\n");
  const QByteArray folders = qgetenv("XDG_DATA_DIRS");
  qputenv("XDG_DATA_DIRS", QFile::encodeName(home.path(u"first"_s) + u':' + home.path(u"second"_s)));
  for (const Case& each : cases)
    EXPECT_EQ(Workspace::isInstalled(QString::fromLatin1(each.identifier)), each.isInstalled)
        << each.identifier;
  qputenv("XDG_DATA_DIRS", folders);  // empty counts as absent
}

}  // namespace
