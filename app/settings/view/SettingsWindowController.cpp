#include "app/settings/view/SettingsWindowController.h"

#include "app/settings/view/SettingsView.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/WindowFront.h"

namespace sorrel {

SettingsWindowController::SettingsWindowController(bool canUpdate) : hasUpdater(canUpdate) {
}

SettingsWindowController::~SettingsWindowController() {
  delete shown;
}

void SettingsWindowController::open() {
  if (!shown) {
    shown = new SettingsView(hasUpdater, lastTab, [this](int tab) { lastTab = tab; });
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->setWindowRole(QStringLiteral("settings"));
    if (const auto image = platform::Image::named(QStringLiteral("sorrel")))
      shown->setWindowIcon(image->icon);
  }
  platform::bringToFront(*shown);
}

}  // namespace sorrel
