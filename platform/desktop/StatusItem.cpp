#include "platform/desktop/StatusItem.h"

#include "platform/base/Log.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/tray/StatusNotifierIcon.h"
#include "platform/desktop/tray/XEmbedIcon.h"
#include "platform/wayland/WaylandConnection.h"

#include <QCursor>

namespace platform {
namespace {

/// A desktop may start its tray well after the programs of the session, and may start it anew.
constexpr auto absenceProof = std::chrono::seconds(20);

}  // namespace

StatusItem::StatusItem(const Image& image, Action action, MenuProvider menuProvider,
                       std::function<void()> onAbsence)
    : handlers{[this, action = std::move(action)](const Event& event, const std::optional<QPoint>& place) {
                 lastClick = place;
                 action(event);
               },
               std::move(menuProvider)},
      shownImage(image),
      absent(std::move(onAbsence)),
      watch([this](const Tray& tray) { changeTo(tray); }) {
}

void StatusItem::changeTo(const Tray& tray) {
  icon.reset();  // the old tray may still be there, with the icon in it
  lastClick.reset();
  absence.cancel();
  switch (tray.kind) {
    case Tray::Kind::None:
      absence = MainQueue::main().asyncAfter(absenceProof, [this] { tellOfAbsence(); });
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

void StatusItem::tellOfAbsence() {
  if (!std::exchange(isAbsenceTold, true))
    log(QStringLiteral("Sorrel status item: this desktop has no tray; the hot keys work all the same."));
  if (absent)
    absent();
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
  if (lastClick)
    return QRectF(*lastClick, QSizeF(1, 1));
  if (waylandDisplay())
    if (const auto all = screens(); !all.empty())
      return QRectF(all.front().visibleFrame.topRight() - QPointF(1, 0), QSizeF(1, 1));
  return std::nullopt;
}

void StatusItem::popUpMenu(const std::shared_ptr<const Menu>& menu) {
  const auto place = anchor();
  presenter.popUp(menu, place ? place->bottomLeft().toPoint() : QCursor::pos());
}

void StatusItem::cancelTracking() {
  presenter.cancelTracking();
}

}  // namespace platform
