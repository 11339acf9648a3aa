#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

namespace sorrel {

/// What one thumbnail looks like at a moment.
struct ThumbnailLook {
  /// Made by fittedPicture(); null while it loads, and for good where the file can't be read.
  QPixmap picture;
  QString date;
  /// From 0 to 1: how far the thumbnail is drawn as selected, and as just copied.
  qreal selection = 0;
  qreal flash = 0;
  /// Of the sign of progress that stands in for the picture, in turns; none: nothing is under way, and the
  /// sign stands still.
  std::optional<qreal> progressTurn = std::nullopt;
  /// Whether the keyboard is here without having selected the thumbnail.
  bool isFocused = false;
};

/// The picture scaled to what a thumbnail on a square of `side` points shows of it, at `ratio` device pixels
/// a point.
[[nodiscard]] QPixmap fittedPicture(const QImage& image, qreal side, qreal ratio);

/// The upper left corner of such a picture on a thumbnail whose square it is.
[[nodiscard]] QPointF picturePlace(const QRectF& square, const QPixmap& picture);

/// `square` holds the picture; the date stands centred in `caption`.
void paintThumbnail(QPainter& painter, const QRectF& square, const QRectF& caption,
                    const ThumbnailLook& look);

}  // namespace sorrel
