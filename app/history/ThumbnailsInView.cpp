#include "app/history/ThumbnailsInView.h"

#include "app/history/ThumbnailPainter.h"

namespace sorrel {
namespace {

constexpr int maxPixel = 320;

/// A file that changes becomes another thumbnail.
QByteArray keyOf(const Screenshot& shot) {
  return shot.path + '|' + QByteArray::number(shot.date.time_since_epoch().count());
}

}  // namespace

ThumbnailsInView::ThumbnailsInView(ThumbnailLoader& thumbnailLoader,
                                   std::function<void(const QByteArray&)> whenThere)
    : loader(thumbnailLoader), onPicture(std::move(whenThere)) {
}

ThumbnailsInView::State ThumbnailsInView::show(std::span<const Screenshot> inView, qreal squareSide,
                                               qreal pixelRatio) {
  QHash<QByteArray, Thumbnail> before = std::exchange(thumbnails, {});
  if (side != squareSide || ratio != pixelRatio)
    before.clear();  // fitted for another size
  side = squareSide;
  ratio = pixelRatio;
  missing.clear();
  State state = State::Complete;
  for (const Screenshot& shot : inView) {
    const QByteArray key = keyOf(shot);
    Thumbnail& thumbnail = thumbnails[key];
    if (const auto known = before.find(key); known != before.end())
      thumbnail = std::move(*known);
    else if (const auto ready = loader.cached(shot.url(), maxPixel))
      thumbnail.picture = fittedPicture(*ready, side, ratio);
    if (!thumbnail.isLoading())
      continue;
    state = State::Loading;
    if (!thumbnail.request)
      missing.push_back(shot);
  }
  // Not now: the workers would take the cores from the frame that is being painted.
  if (!missing.empty() && !pendingLoading.isPending())
    pendingLoading = platform::MainQueue::main().asyncAfter({}, [this] { loadMissing(); });
  return state;
}

void ThumbnailsInView::loadMissing() {
  // The loader takes the newest request first, and the eye begins at the top.
  for (auto shot = missing.rbegin(); shot != missing.rend(); ++shot)
    thumbnails[keyOf(*shot)].request = loader.thumbnail(
        shot->url(), maxPixel, [this, key = keyOf(*shot), path = shot->path](const QImage& image) {
          Thumbnail& thumbnail = thumbnails[key];
          thumbnail.hasFailed = image.isNull();
          if (!image.isNull())
            thumbnail.picture = fittedPicture(image, side, ratio);
          onPicture(path);
        });
  missing.clear();
}

QPixmap ThumbnailsInView::picture(const Screenshot& screenshot) const {
  return thumbnails.value(keyOf(screenshot)).picture;
}

bool ThumbnailsInView::isLoading(const Screenshot& screenshot) const {
  return thumbnails.value(keyOf(screenshot)).isLoading();
}

}  // namespace sorrel
