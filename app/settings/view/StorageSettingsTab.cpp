#include "app/settings/view/StorageSettingsTab.h"

#include "app/capture/AppPaths.h"
#include "app/capture/Notifications.h"
#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/Locations.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Alert.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/OpenPanel.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace sorrel {
namespace {

constexpr std::array<qint64, 6> retentionChoices{0, 7, 14, 30, 60, 90};
constexpr int pathGap = 2;
constexpr QSize warningSize(320, 56);

void post(const char* name) {
  platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(name));
}

/// What the new folder means for what is in it, the danger in bold red.
std::unique_ptr<QWidget> warningAccessory() {
  const auto run = [](const char* key) { return localized(QString::fromLatin1(key)).toHtmlEscaped(); };
  auto label = std::make_unique<FormText>(TextStyle{11, QFont::Normal, LookColors::secondaryLabel}, nullptr);
  label->setTextFormat(Qt::RichText);
  label->setText(QStringLiteral("%1<b><font color='%4'>%2</font></b>%3")
                     .arg(run("settings.storage.warningNormal1"), run("settings.storage.warningDanger"),
                          run("settings.storage.warningNormal2"), LookColors::destructive.resolved().name()));
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  label->setMinimumSize(warningSize);
  label->setFixedWidth(warningSize.width());
  return label;
}

}  // namespace

StorageSettingsTab::StorageSettingsTab(QWidget* parent) : SettingsTab(parent) {
  addRetention();
  addFolder();
}

void StorageSettingsTab::addRetention() {
  retention = addGroup();
  days = new FormPicker(this);
  for (const qint64 choice : retentionChoices)
    days->addItem(QString(), choice);
  daysRow = retention->addRow(days);
  daysNote = retention->addCaption();
  unreadable = retention->addCaption(FormCaption::Kind::Warning);
  connect(days, &QComboBox::activated, this, [this](int index) {
    auto& defaults = platform::UserDefaults::standard();
    const qint64 chosen = days->itemData(index).toLongLong();
    if (defaults.value(SettingsKeys::autoDeleteDays) == chosen)
      return;
    defaults.set(SettingsKeys::autoDeleteDays, chosen);
    post(Notifications::retentionChanged);
  });
}

void StorageSettingsTab::addFolder() {
  folder = addGroup();
  auto* const place = new QWidget;
  auto* const column = new QVBoxLayout(place);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(pathGap);
  pathLabel = new FormText(FormRow::text, place);
  path = new FormPath({11, QFont::Normal, LookColors::secondaryLabel}, place);
  column->addWidget(pathLabel);
  column->addWidget(path);
  folder->addWide(place);
  change = new QPushButton;
  reset = new QPushButton;
  folder->addButtons({change, reset});
  sharedWarning = folder->addCaption(FormCaption::Kind::Warning);
  connect(change, &QPushButton::clicked, this, &StorageSettingsTab::changeFolder);
  connect(reset, &QPushButton::clicked, this, [] { setFolder(QString()); });
}

void StorageSettingsTab::refresh() {
  refreshRetention();
  refreshFolder();
}

void StorageSettingsTab::refreshRetention() {
  const auto& defaults = platform::UserDefaults::standard();
  retention->setTitle(localized(QStringLiteral("settings.storage.autoDeleteSection")));
  daysRow->setLabel(localized(QStringLiteral("settings.storage.autoDeletePicker")));
  const QString afterDays = localized(QStringLiteral("settings.storage.autoDelete.days"));
  for (int row = 0; row < days->count(); ++row) {
    const qint64 choice = days->itemData(row).toLongLong();
    days->setItemText(row, choice == 0 ? localized(QStringLiteral("settings.storage.autoDelete.off"))
                                       : afterDays.arg(choice));
  }
  const qint64 stored = defaults.value(SettingsKeys::autoDeleteDays);
  days->setCurrentIndex(days->findData(stored));
  daysNote->setText(stored < 1 ? localized(QStringLiteral("settings.storage.autoDelete.offNote"))
                               : localized(QStringLiteral("settings.storage.autoDelete.onNote")).arg(stored));
  unreadable->setText(defaults.isInDoubt() ? localized(QStringLiteral("settings.storage.unreadable"))
                                           : QString());
}

void StorageSettingsTab::refreshFolder() {
  const QString custom = platform::UserDefaults::standard().value(SettingsKeys::storageDirectory);
  folder->setTitle(localized(QStringLiteral("settings.storage.locationSection")));
  pathLabel->setText(localized(QStringLiteral("settings.storage.currentFolder")));
  path->setAccessibleName(pathLabel->text());
  path->setText(platform::Locations::abbreviatingWithTilde(
      custom.isEmpty() ? AppPaths::bottleDirectory().toLocalFile() : custom));
  change->setText(localized(QStringLiteral("settings.storage.changeFolder")));
  reset->setText(localized(QStringLiteral("settings.storage.resetFolder")));
  if (custom.isEmpty() && reset->hasFocus())
    change->setFocus();
  reset->setVisible(!custom.isEmpty());
  sharedWarning->setText(custom.isEmpty() ? QString()
                                          : localized(QStringLiteral("settings.storage.sharedWarning")));
}

void StorageSettingsTab::changeFolder() {
  platform::OpenPanel panel;
  panel.choice = platform::OpenPanel::Choice::Folder;
  panel.message = localized(QStringLiteral("settings.storage.usePanelMessage"));
  panel.prompt = localized(QStringLiteral("settings.storage.usePanelPrompt"));
  platform::OpenPanelPresenter::shared().present(panel, *window(),
                                                 lifetime.guarded([this](const QList<QUrl>& chosen) {
                                                   if (!chosen.isEmpty())
                                                     confirm(chosen.first());
                                                 }));
}

void StorageSettingsTab::confirm(const QUrl& chosen) {
  const QString path = chosen.toLocalFile();
  platform::Alert alert;
  if (const auto image = platform::Image::named(QStringLiteral("sorrel")))
    alert.icon = image->icon;
  alert.messageText = localized(QStringLiteral("settings.storage.confirmFolder.message"));
  alert.informativeText = path;
  alert.accessoryView = warningAccessory();
  alert.buttons = QStringList{localized(QStringLiteral("settings.storage.confirmFolder.use")),
                              localized(QStringLiteral("common.cancel"))};
  platform::Alert::present(std::move(alert), window(), lifetime.guarded([path](std::optional<int> button) {
    if (button == 0)
      setFolder(path);
  }));
}

void StorageSettingsTab::setFolder(const QString& path) {
  platform::UserDefaults::standard().set(SettingsKeys::storageDirectory, path);
  post(Notifications::storageLocationChanged);
}

}  // namespace sorrel
