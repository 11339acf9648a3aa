#include "platform/desktop/Image.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QPixmap>

namespace platform {
namespace {

std::optional<Image> fromResource(const QString& path) {
  if (!QFile::exists(path))
    return std::nullopt;
  Image image;
  image.icon = QIcon(path);
  return image;
}

std::optional<Image> read(const QString& name) {
  const QString path = QStringLiteral(":/sorrel/images/") + name;
  // Images that are on screen from the start come in drawn sizes too: no vector image need be read for them.
  Image image;
  for (const int side : {16, 18, 20, 22, 24, 32, 36, 44, 48, 64})
    if (const QString drawn = QStringLiteral("%1@%2.png").arg(path).arg(side); QFile::exists(drawn))
      image.icon.addFile(drawn, QSize(side, side));
  return image.icon.isNull() ? fromResource(path + QStringLiteral(".svg")) : image;
}

}  // namespace

std::optional<Image> Image::named(const QString& name) {
  // Read once: the toolkit keeps the pixels of each icon that it draws, however short the icon itself lives.
  static QHash<QString, std::optional<Image>> known;
  static const bool isForgottenAtEnd = (qAddPostRoutine([] { known.clear(); }), true);
  Q_UNUSED(isForgottenAtEnd);
  if (!known.contains(name))
    known.insert(name, read(name));
  return known.value(name);
}

std::optional<Image> Image::withSystemSymbolName(const QString& name) {
  return fromResource(QStringLiteral(":/sorrel/symbols/%1.svg").arg(name));
}

Image Image::blank(int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  Image image;
  image.icon = QIcon(pixmap);
  image.size = QSizeF(size, size);
  return image;
}

}  // namespace platform
