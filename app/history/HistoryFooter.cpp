#include "app/history/HistoryFooter.h"

#include "app/capture/AppPaths.h"
#include "app/capture/Notifications.h"
#include "app/look/TextButton.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppColors.h"
#include "platform/base/Locations.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Workspace.h"

#include <QHBoxLayout>

namespace sorrel {

HistoryFooter::HistoryFooter(QWidget* parent)
    : QWidget(parent),
      folder(new TextButton({12, QFont::Medium, AppColors::tertiaryLabel}, QStringLiteral("internaldrive"),
                            this)),
      settings(new TextButton({12, QFont::Medium, AppColors::accent}, {}, this)) {
  auto* const row = new QHBoxLayout(this);
  // What is around the buttons' texts counts.
  constexpr int side = 14 - TextButton::margin, edge = 10 - TextButton::margin;
  row->setContentsMargins(side, edge, side, edge);
  row->setSpacing(6);
  row->addWidget(folder);
  row->addSpacing(8);
  row->addStretch();
  row->addWidget(settings);
  connect(folder, &QAbstractButton::clicked, this,
          [] { platform::Workspace::open(AppPaths::bottleDirectory()); });
  connect(settings, &QAbstractButton::clicked, this, [] {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(Notifications::openSettings));
  });
  refresh();
}

void HistoryFooter::refresh() {
  const QString help = localized(QStringLiteral("menu.openBottleFolder"));
  const QString path = platform::Locations::abbreviatingWithTilde(AppPaths::bottleDirectory().toLocalFile());
  folder->setText(path);
  folder->setToolTip(help);
  folder->setAccessibleName(help);
  folder->setAccessibleDescription(path);
  settings->setText(localized(QStringLiteral("history.settings")));
  settings->setAccessibleName(settings->text());
}

}  // namespace sorrel
