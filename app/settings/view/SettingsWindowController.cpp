#include "app/settings/view/SettingsWindowController.h"

#include "app/settings/view/SettingsView.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/WindowFront.h"
#include "platform/system/FreeMemory.h"

namespace sorrel {
namespace {

/// In the middle of what the desktop's bars leave of the screen that the user works on.
QPoint placeOf(const QSize& size) {
  const std::vector<platform::Screen> screens = platform::screens();
  QRect frame({}, size);
  if (!screens.empty())
    frame.moveCenter(screens.front().visibleFrame.center().toPoint());
  return frame.topLeft();
}

}  // namespace

SettingsWindowController::SettingsWindowController(platform::Updater* updaterOrNull)
    : updater(updaterOrNull) {
}

SettingsWindowController::~SettingsWindowController() {
  delete shown;
}

void SettingsWindowController::open() {
  if (!shown) {
    shown = new SettingsView(updater, lastTab, [this](int tab) { lastTab = tab; });
    shown->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(shown, &QObject::destroyed, [] { platform::giveBackFreeMemory(); });
    shown->setWindowFlags(Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    shown->move(placeOf(shown->size()));
    shown->setWindowRole(QStringLiteral("settings"));
    if (const auto image = platform::Image::named(QStringLiteral("sorrel")))
      shown->setWindowIcon(image->icon);
  }
  platform::bringToFront(*shown);
}

}  // namespace sorrel
