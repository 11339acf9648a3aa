#include "app/settings/view/AboutTab.h"

#include "app/capture/Notifications.h"
#include "app/look/LookColors.h"
#include "app/look/SegmentedPicker.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Alert.h"
#include "platform/desktop/Image.h"
#include "platform/updater/FeedUpdater.h"

#include <QCheckBox>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace sorrel {

namespace UpdaterSettings = platform::UpdaterSettings;
using platform::UserDefaults;

namespace {

constexpr int headerTop = 20, headerBottom = 10, headerGap = 6;
constexpr int iconSide = 64;

class ProgramIcon : public QWidget {
 public:
  explicit ProgramIcon(QWidget* parent) : QWidget(parent) { setFixedSize(iconSide, iconSide); }

 private:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (image)
      image->icon.paint(&painter, rect());
  }

  const std::optional<platform::Image> image = platform::Image::named(QStringLiteral("sorrel"));
};

std::vector<SegmentedPicker::Choice> languageChoices() {
  std::vector<SegmentedPicker::Choice> choices;
  for (const AppLanguage each : allAppLanguages)
    choices.push_back({localized(labelKey(each))});
  return choices;
}

const char* activityKey(platform::Updater::Activity activity) {
  switch (activity) {
    case platform::Updater::Activity::Checking:
      return "settings.updates.checking";
    case platform::Updater::Activity::Downloading:
      return "settings.updates.downloading";
    case platform::Updater::Activity::None:
      break;
  }
  return "settings.updates.checkNow";
}

}  // namespace

AboutTab::AboutTab(platform::Updater* updaterOrNull, QWidget* parent)
    : SettingsTab(parent),
      updater(updaterOrNull),
      loginItem([this] { atLogin->setChecked(loginItem.isEnabled()); }) {
  addHeader();
  addLanguage();
  addUpdates();
  addStartup();
}

void AboutTab::addHeader() {
  auto* const header = new QWidget;
  auto* const column = new QVBoxLayout(header);
  column->setContentsMargins(0, headerTop, 0, headerBottom);
  column->setSpacing(headerGap);
  const auto add = [&](QWidget* line) { column->addWidget(line, 0, Qt::AlignHCenter); };
  add(new ProgramIcon(header));
  auto* const name = new FormText({18, QFont::Bold, LookColors::label}, header);
  name->setText(QStringLiteral("Sorrel"));
  add(name);
  tagline = new FormText({12, QFont::Normal, LookColors::secondaryLabel}, header);
  add(tagline);
  auto* const version = new FormText({11, QFont::Normal, AppColors::tertiaryLabel}, header);
  version->setText(appVersion(QStringLiteral(SORREL_VERSION), QStringLiteral(SORREL_BUILD)));
  version->setTextInteractionFlags(Qt::TextSelectableByMouse);
  add(version);
  Form::addHeader(header);
}

void AboutTab::addLanguage() {
  languageGroup = addGroup();
  language = new SegmentedPicker(
      [](int chosen) {
        LocalizationManager::shared().setLanguage(allAppLanguages.at(static_cast<size_t>(chosen)));
      },
      this);
  language->setChoices(languageChoices());  // here, for the keyboard's way: it goes by the order of making
  languageGroup->addWide(language);
}

void AboutTab::addUpdates() {
  updates = addGroup();
  autoDownload = new QCheckBox;
  autoDownloadRow = updates->addRow(autoDownload);
  checkNow = new QPushButton;
  updates->addButtons({checkNow});
  updatesNote = updates->addCaption();
  autoDownload->setEnabled(updater);
  checkNow->setEnabled(updater);
  connect(autoDownload, &QCheckBox::clicked, this,
          [](bool isOn) { UserDefaults::standard().set(UpdaterSettings::automaticallyUpdate, isOn); });
  if (updater)
    activity = updater->observe([this] { showActivity(); });
  connect(checkNow, &QPushButton::clicked, this, [] {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(Notifications::checkForUpdates));
  });
}

void AboutTab::addStartup() {
  startup = addGroup();
  atLogin = new QCheckBox;
  atLoginRow = startup->addRow(atLogin);
  connect(atLogin, &QCheckBox::clicked, this, [this](bool isOn) { setStartsAtLogin(isOn); });
}

void AboutTab::setStartsAtLogin(bool isWanted) {
  const platform::Result<> changed = loginItem.setEnabled(isWanted);
  atLogin->setChecked(loginItem.isEnabled());
  if (changed)
    return;
  platform::Alert alert;
  alert.messageText = localized(QStringLiteral("settings.startup.failed"));
  alert.informativeText = changed.error().reason;
  alert.buttons = {localized(QStringLiteral("common.ok"))};
  platform::Alert::present(std::move(alert), window(), [](std::optional<int>) {});
}

void AboutTab::refresh() {
  tagline->setText(localized(QStringLiteral("settings.about.tagline")));
  languageGroup->setTitle(localized(QStringLiteral("settings.language.section")));
  language->setAccessibleName(localized(QStringLiteral("settings.language")));
  language->setChoices(languageChoices());
  const auto& shared = LocalizationManager::shared();
  language->setChosen(
      static_cast<int>(std::find(allAppLanguages.begin(), allAppLanguages.end(), shared.language()) -
                       allAppLanguages.begin()));
  updates->setTitle(localized(QStringLiteral("settings.updates.section")));
  autoDownloadRow->setLabel(localized(QStringLiteral("settings.updates.autoDownload")));
  autoDownload->setChecked(UserDefaults::standard().value(UpdaterSettings::automaticallyUpdate));
  startup->setTitle(localized(QStringLiteral("settings.startup.section")));
  atLoginRow->setLabel(localized(QStringLiteral("settings.startup.atLogin")));
  atLogin->setChecked(loginItem.isEnabled());
  showActivity();
  updatesNote->setText(localized(updater ? QStringLiteral("settings.updates.autoDownload.desc")
                                         : QStringLiteral("settings.updates.none")));
}

void AboutTab::showActivity() {
  const auto activity = updater ? updater->activity() : platform::Updater::Activity::None;
  checkNow->setText(localized(QString::fromLatin1(activityKey(activity))));
}

QString appVersion(const QString& version, const QString& build) {
  if (version.isEmpty())
    return {};
  return build.isEmpty() ? u'v' + version : QStringLiteral("v%1 (build %2)").arg(version, build);
}

}  // namespace sorrel
