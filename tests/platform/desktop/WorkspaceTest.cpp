#include "platform/base/Task.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/Workspace.h"
#include "tests/support/ScratchHome.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace platform;

namespace {

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class WorkspaceTest : public testing::Test {
 protected:
  testing_support::ScratchHome home;
  const QString folder = home.path(QStringLiteral("bottle"));
  const QString directoryFile = folder + QStringLiteral("/.directory");
  const QString icons = home.path(QStringLiteral(".local/share/Sorrel/folder-icons/"));
  QList<QStringList> gioCalls;
  TaskLauncherOverride launcher{[this](const Task& task, auto) -> std::optional<QString> {
    gioCalls << task.arguments;
    return std::nullopt;
  }};
};

TEST_F(WorkspaceTest, AFolderGetsItsIconOnceAndKeepsItsOtherEntries) {
  home.write(QStringLiteral("bottle/.directory"),
             "# mine\n[Desktop Entry]\nName=병\nIcon=old\n[Other]\nIcon=kept\n");
  // The other way of telling, where the tool for it is there.
  const QString tools = home.path(QStringLiteral("tools"));
  QFile gio(home.write(QStringLiteral("tools/gio"), "#!/bin/sh\n"));
  gio.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QFile::encodeName(tools));

  EXPECT_TRUE(Workspace::setIcon(QStringLiteral("FolderIconFull"), folder));
  const QString icon = icons + QStringLiteral("FolderIconFull.svg");
  EXPECT_EQ(contents(directoryFile),
            "# mine\n[Desktop Entry]\nName=병\nIcon=" + QFile::encodeName(icon) + "\n[Other]\nIcon=kept\n");
  EXPECT_EQ(contents(icon), contents(QStringLiteral(":/sorrel/images/FolderIconFull.svg")));
  ASSERT_EQ(gioCalls.size(), 1);
  EXPECT_EQ(gioCalls[0], QStringList({QStringLiteral("set"), folder, QStringLiteral("metadata::custom-icon"),
                                      QStringLiteral("file://") + icon}));
  EXPECT_TRUE(Workspace::setIcon(QStringLiteral("FolderIconFull"), folder));
  EXPECT_EQ(gioCalls.size(), 1) << "nothing to do the second time";
  qputenv("PATH", path);
}

TEST_F(WorkspaceTest, AFolderWithoutEntriesGetsThem) {
  const QByteArray entry = "[Desktop Entry]\nIcon=" + QFile::encodeName(icons) + "FolderIconEmpty.svg\n";
  QDir().mkpath(folder);
  for (const QByteArray& before : {QByteArray(), QByteArray("[Other]\nA=b")}) {
    QFile::remove(directoryFile);
    if (!before.isEmpty())
      home.write(QStringLiteral("bottle/.directory"), before);
    EXPECT_TRUE(Workspace::setIcon(QStringLiteral("FolderIconEmpty"), folder));
    EXPECT_EQ(contents(directoryFile), (before.isEmpty() ? before : before + '\n') + entry);
  }
}

TEST_F(WorkspaceTest, WhatCannotBeDoneChangesNothing) {
  home.write(QStringLiteral("bottle/.directory"), "[Desktop Entry]\n");
  EXPECT_FALSE(Workspace::setIcon(QStringLiteral("NoSuchImage"), folder));
  EXPECT_EQ(contents(directoryFile), "[Desktop Entry]\n");
  EXPECT_FALSE(Workspace::setIcon(QStringLiteral("FolderIconFull"), home.path(QStringLiteral("missing"))));
}

TEST(ImageTest, ImagesAreFoundByNameOrNotAtAll) {
  for (const char* name : {"MenuBarIcon", "MenuBarIconEmpty", "FolderIconEmpty", "FolderIconFull"}) {
    const auto image = Image::named(QString::fromLatin1(name));
    ASSERT_TRUE(image) << name;
    EXPECT_FALSE(image->icon.pixmap(22).isNull()) << name;
  }
  EXPECT_TRUE(Image::withSystemSymbolName(QStringLiteral("camera.viewfinder")));
  EXPECT_FALSE(Image::named(QStringLiteral("NoSuchImage")));
  EXPECT_FALSE(Image::withSystemSymbolName(QStringLiteral("MenuBarIcon")));
  EXPECT_EQ(Image::blank(18).icon.availableSizes(), QList<QSize>({QSize(18, 18)}));
}

}  // namespace
