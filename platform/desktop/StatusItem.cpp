#include "platform/desktop/StatusItem.h"

#include "platform/base/Log.h"
#include "platform/desktop/tray/StatusNotifierIcon.h"
#include "platform/desktop/tray/XEmbedIcon.h"

#include <QCursor>

namespace platform {

StatusItem::StatusItem(const Image& image, Action action, MenuProvider menuProvider)
    : handlers{[this, action = std::move(action)](const Event& event, const std::optional<QPoint>& place) {
                 lastClick = place;
                 action(event);
               },
               std::move(menuProvider)},
      shownImage(image),
      watch([this](const Tray& tray) { changeTo(tray); }) {
}

void StatusItem::changeTo(const Tray& tray) {
  icon.reset();  // the old tray may still be there, with the icon in it
  lastClick.reset();
  switch (tray.kind) {
    case Tray::Kind::None:
      if (!std::exchange(isAbsenceTold, true))
        log(QStringLiteral("Sorrel status item: this desktop has no tray; the hot keys work all the same."));
      return;
    case Tray::Kind::StatusNotifier:
      icon = std::make_unique<StatusNotifierIcon>(handlers);
      break;
    case Tray::Kind::XEmbed:
      icon = std::make_unique<XEmbedIcon>(tray.window, handlers);
      break;
  }
  icon->setImage(shownImage);
  icon->setToolTip(toolTip);
}

void StatusItem::setImage(const Image& image) {
  shownImage = image;
  if (icon)
    icon->setImage(image);
}

void StatusItem::setToolTip(const QString& text) {
  toolTip = text;
  if (icon)
    icon->setToolTip(text);
}

void StatusItem::menuChanged() {
  if (icon)
    icon->menuChanged();
}

std::optional<QRectF> StatusItem::anchor() const {
  if (const auto frame = icon ? icon->frame() : std::nullopt)
    return frame;
  return lastClick ? std::optional(QRectF(*lastClick, QSizeF(1, 1))) : std::nullopt;
}

void StatusItem::popUpMenu(const std::shared_ptr<const Menu>& menu) {
  const auto place = anchor();
  presenter.popUp(menu, place ? place->bottomLeft().toPoint() : QCursor::pos());
}

void StatusItem::cancelTracking() {
  presenter.cancelTracking();
}

}  // namespace platform
