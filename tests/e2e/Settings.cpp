#include "tests/e2e/Settings.h"

#include "app/settings/view/SettingsView.h"

#include <linux/input-event-codes.h>

namespace e2e {

using namespace Qt::StringLiterals;

Settings::Settings(Desktop& owner, Sorrel& program) : desktop(owner), sorrel(program) {
}

std::optional<ScreenWindow> Settings::window() const {
  const QSize size = (QSizeF(sorrel::SettingsView::fixedSize) * desktop.scale()).toSize();
  for (const ScreenWindow& each : desktop.screen().windows())
    if (each.className.contains(u"sorrel"_s, Qt::CaseInsensitive) && each.area.size() == size)
      return each;
  return std::nullopt;
}

void Settings::waitUntilOpen() const {
  until("the settings are open and have the keyboard", [this] {
    const auto open = window();
    return open && desktop.screen().keyboardWindow() == open->id;
  });
  (void)desktop.screen().settledPicture();
}

void Settings::openByMenu() {
  sorrel.openMenu();
  for (const int key : {KEY_DOWN, KEY_DOWN, KEY_ENTER})
    desktop.input().tapKey(key);
  waitUntilOpen();
}

void Settings::openByKeys() {
  pressWithControl(KEY_COMMA);
  waitUntilOpen();
}

void Settings::pressWithControl(int evdevCode) {
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().tapKey(evdevCode);
  desktop.input().releaseKey(KEY_LEFTCTRL);
}

void Settings::select(Tab tab) {
  constexpr int tabs = 4;
  while (current != tab) {
    (void)desktop.screen().settledPictureAfter([this] { pressWithControl(KEY_TAB); });
    current = static_cast<Tab>((static_cast<int>(current) + 1) % tabs);
  }
}

void Settings::click(QPointF point) {
  const QPoint place = window()->area.topLeft() + (point * desktop.scale()).toPoint();
  desktop.input().moveTo(place.x(), place.y());
  desktop.input().clickButton(1);
}

void Settings::close() {
  desktop.input().tapKey(KEY_ESC);
  until("the settings are closed", [this] { return !window(); });
}

}  // namespace e2e
