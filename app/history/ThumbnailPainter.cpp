#include "app/history/ThumbnailPainter.h"

#include "app/history/HistoryColors.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>

namespace sorrel {
namespace {

constexpr qreal cornerRadius = 8;
constexpr qreal pictureInset = 5;
constexpr qreal progressDiameter = 18;
constexpr qreal ringGap = 4;

void outline(QPainter& painter, const QRectF& square, const QColor& color, qreal width) {
  painter.setPen(QPen(color, width));
  painter.drawRoundedRect(square, cornerRadius, cornerRadius);
}

QColor translucent(const platform::Color& color, qreal opacity) {
  QColor result = color.resolved();
  result.setAlphaF(static_cast<float>(opacity));
  return result;
}

/// What all thumbnails have below their picture, and their outline. It is kept as a picture: the painter
/// fills curved shapes of this size on several threads, which costs more than the filling.
void paintWell(QPainter& painter, const QRectF& square) {
  constexpr qreal overhang = 1;  // of the outline, which lies half outside
  const qreal ratio = painter.device()->devicePixelRatio();
  const QColor fill = HistoryColors::well.resolved(), line = AppColors::separator.resolved();
  const QString key = QStringLiteral("thumbnail well %1 %2 %3 %4")
                          .arg(square.width())
                          .arg(ratio)
                          .arg(fill.rgba())
                          .arg(line.rgba());
  const QRectF whole = square.adjusted(-overhang, -overhang, overhang, overhang);
  QPixmap well;
  if (!QPixmapCache::find(key, &well)) {
    well = QPixmap((whole.size() * ratio).toSize());
    well.setDevicePixelRatio(ratio);
    well.fill(Qt::transparent);
    QPainter onWell(&well);
    onWell.setRenderHint(QPainter::Antialiasing);
    onWell.setPen(Qt::NoPen);
    onWell.setBrush(fill);
    const QRectF inside(QPointF(overhang, overhang), square.size());
    onWell.drawRoundedRect(inside, cornerRadius, cornerRadius);
    onWell.setBrush(Qt::NoBrush);
    outline(onWell, inside, line, 0.5);
    onWell.end();
    QPixmapCache::insert(key, well);
  }
  painter.drawPixmap(whole.topLeft(), well);
}

/// A soft light around the square that fades out over `radius` points: lines that get fainter as they get
/// wider.
void glow(QPainter& painter, const QRectF& square, qreal radius, qreal opacity) {
  constexpr int rings = 6;
  for (int ring = rings; ring >= 1; --ring)
    outline(painter, square, translucent(AppColors::accent, opacity / rings), 2 * radius * ring / rings);
}

void paintProgress(QPainter& painter, const QPointF& center, std::optional<qreal> turn) {
  QRectF circle(0, 0, progressDiameter, progressDiameter);
  circle.moveCenter(center);
  QColor color = LookColors::secondaryLabel.resolved();
  color.setAlpha(color.alpha() / 3);
  painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap));
  painter.drawEllipse(circle);
  if (!turn)
    return;
  painter.setPen(QPen(LookColors::secondaryLabel.resolved(), 2, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(circle, static_cast<int>(-*turn * 360 * 16), 90 * 16);
}

}  // namespace

QPixmap fittedPicture(const QImage& image, qreal side, qreal ratio) {
  const int box = static_cast<int>((side - 2 * pictureInset) * ratio);
  const QSize size = image.size().scaled(box, box, Qt::KeepAspectRatio).expandedTo({1, 1});
  QPixmap picture = QPixmap::fromImage(image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  picture.setDevicePixelRatio(ratio);
  return picture;
}

QPointF picturePlace(const QRectF& square, const QPixmap& picture) {
  QRectF place(QPointF(), picture.deviceIndependentSize());
  place.moveCenter(square.center());
  // On whole device pixels: the picture has been scaled for them.
  const qreal ratio = picture.devicePixelRatio();
  return QPointF(std::round(place.left() * ratio), std::round(place.top() * ratio)) / ratio;
}

void paintThumbnail(QPainter& painter, const QRectF& square, const QRectF& caption,
                    const ThumbnailLook& look) {
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  const qreal scale = 1 + 0.03 * look.flash;
  painter.translate(square.center());
  painter.scale(scale, scale);
  painter.translate(-square.center());

  painter.setBrush(Qt::NoBrush);
  if (look.flash > 0)
    glow(painter, square, 6, 0.55 * look.flash);
  paintWell(painter, square);
  if (look.picture.isNull())
    paintProgress(painter, square.center(), look.progressTurn);
  else
    painter.drawPixmap(picturePlace(square, look.picture), look.picture);
  if (look.selection > 0)
    outline(painter, square, translucent(AppColors::accent, 0.85 * look.selection), 2 * look.selection);
  if (look.flash > 0)
    outline(painter, square, AppColors::accent.resolved(), 3.5 * look.flash);
  if (look.isFocused)
    drawFocusRing(painter, square.adjusted(-ringGap, -ringGap, ringGap, ringGap),
                  AppColors::accent.resolved(), cornerRadius + ringGap);
  painter.restore();

  painter.setPen(LookColors::secondaryLabel.resolved());
  const QFontMetricsF metrics(painter.font());
  painter.drawText(caption, Qt::AlignCenter, metrics.elidedText(look.date, Qt::ElideRight, caption.width()));
}

}  // namespace sorrel
