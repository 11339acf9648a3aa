#include "app/shell/SorrelApp.h"

#include "app/look/LookStyle.h"
#include "app/shell/AppColors.h"
#include "app/shell/AppDelegate.h"
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
  windows.openEditor = [this](const QUrl& url) { editor.open(url); };
  windows.openSettings = [this] { settings.open(); };
  appDelegate = std::make_unique<AppDelegate>(std::move(windows), nullptr, &QApplication::quit);
  platform::Environment::provide(
      std::make_shared<platform::MainMenu>([this] { return appDelegate->buildContextMenu(); }));
  appDelegate->applicationDidFinishLaunching();
  appearance.emplace(AppColors::accent);
  if (!request.action.isEmpty())
    act(request);
  instance.setRequestHandler([this](const platform::LaunchRequest& another) {
    if (another.action.isEmpty())
      appDelegate->applicationShouldHandleReopen();
    else
      act(another);
  });
  return QApplication::exec();
}

void SorrelApp::act(const platform::LaunchRequest& request) {
  const std::optional<Action> action = actionNamed(request.action);
  if (!action) {
    platform::log(QStringLiteral("Sorrel: no such action: ") + QString::fromLatin1(request.action));
    return;
  }
  platform::ActivationToken::keep(request.activationToken);
  appDelegate->perform(*action);
}

}  // namespace sorrel
