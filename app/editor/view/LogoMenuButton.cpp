#include "app/editor/view/LogoMenuButton.h"

#include "app/look/ButtonControls.h"
#include "app/look/LookColors.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/WatermarkPresets.h"
#include "platform/base/FilePath.h"
#include "platform/desktop/Symbols.h"

#include <QMenu>
#include <QPainter>
#include <QPointer>

namespace sorrel {
namespace {

constexpr int pictureSide = 16;
constexpr int longestName = 240;

/// In the middle of a square, so that the names begin below each other.
QIcon iconOf(const QImage& picture, qreal ratio) {
  const int side = qRound(pictureSide * ratio);
  QPixmap square(side, side);
  square.fill(Qt::transparent);
  const QSize size = picture.size().scaled(side, side, Qt::KeepAspectRatio);
  QPainter painter(&square);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRect({(side - size.width()) / 2, (side - size.height()) / 2}, size), picture);
  painter.end();
  square.setDevicePixelRatio(ratio);
  return square;
}

}  // namespace

LogoMenuButton::LogoMenuButton(Actions actions, QWidget* parent)
    : QPushButton(parent), handlers(std::move(actions)) {
  setFlat(true);
  setFocusPolicy(Qt::TabFocus);
  setSymbol(*this, QStringLiteral("photo"));
  auto* const menu = new QMenu(this);
  connect(menu, &QMenu::aboutToShow, this, [this] {
    fill();
    handlers.opens();
  });
  connect(menu, &QMenu::aboutToHide, this, [this] {
    requests.clear();
    handlers.closes();
  });
  setMenu(menu);
}

void LogoMenuButton::fill() {
  menu()->clear();
  connect(menu()->addAction(localized(QStringLiteral("editor.logo.pickFile"))), &QAction::triggered, this,
          [this] { handlers.pickFile(); });
  const QList<QUrl> stored = WatermarkPresets::all();
  if (stored.isEmpty())
    return;
  menu()->addSection(localized(QStringLiteral("editor.logo.savedSection")));
  for (const QUrl& logo : stored)
    addStored(logo);
}

void LogoMenuButton::addStored(const QUrl& logo) {
  namespace FilePath = platform::FilePath;
  const QString name = FilePath::text(FilePath::baseName(FilePath::of(logo)));
  const QString title = menu()->fontMetrics().elidedText(name, Qt::ElideMiddle, longestName);
  // A name is text to be shown, not a place for the toolkit's mnemonic mark.
  auto* const action = menu()->addAction(QString(title).replace(u'&', QStringLiteral("&&")));
  const qreal ratio = devicePixelRatioF();
  const QColor ink = LookColors::secondaryLabel.resolved(platform::appearanceOf(palette()));
  action->setIcon(platform::symbolPixmap(QStringLiteral("photo"), pictureSide, ratio, {ink}));
  connect(action, &QAction::triggered, this, [this, logo] { handlers.choose(logo); });
  requests.push_back(ThumbnailLoader::shared().thumbnail(
      logo, qRound(pictureSide * ratio), [action = QPointer(action), ratio](const QImage& picture) {
        if (action && !picture.isNull())
          action->setIcon(iconOf(picture, ratio));
      }));
}

}  // namespace sorrel
