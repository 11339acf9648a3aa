#include "app/shell/SorrelIcon.h"

#include "app/settings/LocalizationManager.h"

namespace sorrel::SorrelIcon {

platform::Image image(qint64 count, int size) {
  using platform::Image;
  const QString full = QStringLiteral("MenuBarIcon");
  auto found = Image::named(count > 0 ? full : QStringLiteral("MenuBarIconEmpty"));
  if (!found)
    found = Image::named(full);
  if (!found)
    found = Image::withSystemSymbolName(QStringLiteral("camera.viewfinder"));
  Image image = found.value_or(Image::blank(size));
  image.size = QSizeF(size, size);
  image.accessibilityDescription = QStringLiteral("Sorrel — %1 screenshots").arg(count);
  return image;
}

QString toolTip(qint64 count) {
  if (count < 1)
    return localized(QStringLiteral("menu.toolTip.empty"));
  const auto* const key = count == 1 ? "menu.toolTip.one" : "menu.toolTip.many";
  return localized(QString::fromLatin1(key)).arg(count);
}

}  // namespace sorrel::SorrelIcon
