#include "app/shell/SorrelApp.h"

#include "app/look/LookStyle.h"
#include "app/shell/AppColors.h"
#include "app/shell/AppDelegate.h"
#include "app/shell/ProgramUpdater.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/Log.h"
#include "platform/base/MainMenu.h"
#include "platform/base/TerminationSignals.h"
#include "platform/base/UserDefaults.h"
#include "platform/desktop/ActivationToken.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/input/LayoutSwitch.h"
#include "platform/input/SymbolicHotKeys.h"

namespace sorrel {

SorrelApp::SorrelApp(int& argc, char** argv, platform::SingleInstance& first)
    : application(argc, argv), instance(first) {
  QApplication::setStyle(new LookStyle);
  QApplication::setApplicationName(QStringLiteral("Sorrel"));
  QApplication::setDesktopFileName(QStringLiteral("org.sorrel.Sorrel"));
  QApplication::setQuitOnLastWindowClosed(false);
  // Of a quick stroke of the pen every point counts. The toolkit's connection to the display switches this
  // on.
  QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
}

SorrelApp::~SorrelApp() = default;

int SorrelApp::run(const platform::LaunchRequest& request) {
  platform::InPlaceFile::finishInterrupted();
  platform::UserDefaults::standard().watch();
  platform::handleTerminationSignals(&QApplication::quit);
  platform::Environment::provide(platform::HotKeyService::forDesktop());
  platform::Environment::provide(platform::KeyboardLayout::forDesktop());
  platform::Environment::provide(platform::LayoutSwitch::forDesktop());
  platform::Environment::provide(platform::symbolicHotKeysOfDesktop());

  AppDelegate::Windows windows;
  windows.openEditor = [this](const QUrl& url) { return editor.open(url); };
  windows.openSettings = [this] { settings->open(); };
  auto updater = makeProgramUpdater();
  settings.emplace(updater.get());
  appDelegate = std::make_unique<AppDelegate>(std::move(windows), std::move(updater), &QApplication::quit);
  platform::Environment::provide(
      std::make_shared<platform::MainMenu>([this] { return appDelegate->buildContextMenu(); }));
  appDelegate->applicationDidFinishLaunching();
  appearance.emplace(AppColors::accent);
  beReachable();
  if (!request.action.isEmpty()) {
    platform::ActivationToken::keep(request.activationToken);
    act(request.action);
  }
  return QApplication::exec();
}

void SorrelApp::beReachable() {
  instance.setRequestHandler([this](const platform::LaunchRequest& request) {
    platform::ActivationToken::keep(request.activationToken);
    if (request.action.isEmpty())
      appDelegate->applicationShouldHandleReopen();
    else if (!act(request.action))
      platform::log(QStringLiteral("Sorrel: no such action: ") + QString::fromLatin1(request.action));
  });
  service.emplace(platform::ApplicationService::Handlers{
      [this] { appDelegate->applicationShouldHandleReopen(); },
      [this](const QList<QUrl>& urls) { appDelegate->open(urls); },
      [this](const QByteArray& action) { return act(action); },
  });
}

bool SorrelApp::act(const QByteArray& name) {
  const std::optional<Action> action = actionNamed(name);
  if (action)
    appDelegate->perform(*action);
  return action.has_value();
}

}  // namespace sorrel
