#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

namespace sorrel {

/// What one thumbnail looks like at a moment.
struct ThumbnailLook {
  /// Made by fittedPicture(); null while it loads, or where the file can't be read.
  QPixmap picture;
  QString date;
  /// From 0 to 1: how far the thumbnail is drawn as selected, and as just copied.
  qreal selection = 0;
  qreal flash = 0;
  /// Of the sign of progress that stands in for the picture, in turns.
  qreal progressTurn = 0;
};

/// The picture scaled to what a thumbnail on a square of `side` points shows of it, at `ratio` device pixels
/// a point.
[[nodiscard]] QPixmap fittedPicture(const QImage& image, qreal side, qreal ratio);

/// `square` holds the picture; the date stands centred in `caption`.
void paintThumbnail(QPainter& painter, const QRectF& square, const QRectF& caption,
                    const ThumbnailLook& look);

}  // namespace sorrel
