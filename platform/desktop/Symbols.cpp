#include "platform/desktop/Symbols.h"

#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>

#include <algorithm>

namespace platform {
namespace {

/// Drawings are middle grey, and white where a mark lies, so every pixel tells how much it has of either.
void tint(QImage& image, const SymbolColors& colors) {
  const auto premultiplied = [](const QColor& color) { return qPremultiply(color.rgba()); };
  const QRgb ink = premultiplied(colors.ink), mark = premultiplied(colors.mark);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int covered = qAlpha(line[x]);
      const int marked = std::clamp(2 * qRed(line[x]) - covered, 0, covered);
      const auto mix = [&](int inkPart, int markPart) {
        return (inkPart * (covered - marked) + markPart * marked + 127) / 255;
      };
      line[x] = qRgba(mix(qRed(ink), qRed(mark)), mix(qGreen(ink), qGreen(mark)),
                      mix(qBlue(ink), qBlue(mark)), mix(qAlpha(ink), qAlpha(mark)));
    }
  }
}

/// `side` in device pixels.
QPixmap tintedSymbol(const QString& name, int side, const SymbolColors& colors) {
  const QString key =
      QStringLiteral("symbol %1 %2 %3 %4").arg(name).arg(side).arg(colors.ink.rgba()).arg(colors.mark.rgba());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap))
    return pixmap;
  // Read through Qt's plugin, so that the SVG library is loaded with the first symbol, not with the program.
  QImageReader reader(QStringLiteral(":/sorrel/symbols/%1.svg").arg(name), "svg");
  // At twice the size: the painter thins diagonal lines of a pixel or less.
  reader.setScaledSize(QSize(side, side) * 2);
  QImage image = reader.read();
  if (image.isNull())
    return {};
  image = image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
              .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  tint(image, colors);
  pixmap = QPixmap::fromImage(std::move(image));
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace

QPixmap symbolPixmap(const QString& name, qreal side, qreal ratio, const SymbolColors& colors) {
  QPixmap pixmap = tintedSymbol(name, qRound(side * ratio), colors);
  pixmap.setDevicePixelRatio(ratio);
  return pixmap;
}

bool drawSymbol(QPainter& painter, const QRectF& bounds, const QString& name, const SymbolColors& colors) {
  const QTransform toDevice = painter.deviceTransform();
  const QRectF device = toDevice.mapRect(bounds);
  const int side = qRound(std::min(device.width(), device.height()));
  const QPixmap pixmap = tintedSymbol(name, side, colors);
  if (pixmap.isNull())
    return false;
  const QPointF corner(qRound(device.center().x() - side / 2.0), qRound(device.center().y() - side / 2.0));
  painter.drawPixmap(toDevice.inverted().mapRect(QRectF(corner, QSizeF(side, side))), pixmap, pixmap.rect());
  return true;
}

}  // namespace platform
