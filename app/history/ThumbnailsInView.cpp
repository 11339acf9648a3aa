#include "app/history/ThumbnailsInView.h"

#include "app/history/ThumbnailPainter.h"

namespace sorrel {
namespace {

constexpr int maxPixel = 320;

/// A file that changes becomes another thumbnail.
QString keyOf(const Screenshot& shot) {
  return shot.path + u'|' + QString::number(shot.date.time_since_epoch().count());
}

}  // namespace

ThumbnailsInView::ThumbnailsInView(ThumbnailLoader& thumbnailLoader,
                                   std::function<void(const QString&)> whenThere)
    : loader(thumbnailLoader), onPicture(std::move(whenThere)) {
}

void ThumbnailsInView::show(std::span<const Screenshot> inView, qreal side, qreal ratio) {
  QHash<QString, Thumbnail> before = std::exchange(thumbnails, {});
  // The loader takes the newest request first, and the eye begins at the top.
  for (auto shot = inView.rbegin(); shot != inView.rend(); ++shot) {
    const QString key = keyOf(*shot);
    if (const auto known = before.find(key); known != before.end())
      thumbnails.insert(key, std::move(*known));
    else
      load(*shot, key, side, ratio);
  }
}

void ThumbnailsInView::load(const Screenshot& shot, const QString& key, qreal side, qreal ratio) {
  Thumbnail& thumbnail = thumbnails[key];
  if (const auto ready = loader.cached(shot.url(), maxPixel)) {
    thumbnail.picture = fittedPicture(*ready, side, ratio);
    return;
  }
  thumbnail.request =
      loader.thumbnail(shot.url(), maxPixel, [this, key, side, ratio, path = shot.path](const QImage& image) {
        if (image.isNull())
          return;
        thumbnails[key].picture = fittedPicture(image, side, ratio);
        onPicture(path);
      });
}

QPixmap ThumbnailsInView::picture(const Screenshot& screenshot) const {
  return thumbnails.value(keyOf(screenshot)).picture;
}

}  // namespace sorrel
