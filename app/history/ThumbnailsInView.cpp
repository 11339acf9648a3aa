#include "app/history/ThumbnailsInView.h"

#include "app/history/ThumbnailPainter.h"

#include <algorithm>

namespace sorrel {
namespace {

constexpr int mostPixels = 320;

/// The size in which the loader's pictures need no further scaling.
int maxPixel(qreal side, qreal ratio) {
  return std::min(fittedSide(side, ratio), mostPixels);
}

/// A file that changes becomes another thumbnail.
QString keyOf(const Screenshot& shot) {
  return shot.path + u'|' + QString::number(shot.date.time_since_epoch().count());
}

}  // namespace

ThumbnailsInView::ThumbnailsInView(ThumbnailLoader& thumbnailLoader,
                                   std::function<void(const QString&)> whenThere)
    : loader(thumbnailLoader), onPicture(std::move(whenThere)) {
}

ThumbnailsInView::~ThumbnailsInView() {
  pendingLoading.cancel();
}

ThumbnailsInView::State ThumbnailsInView::show(std::span<const Screenshot> inView, qreal squareSide,
                                               qreal pixelRatio) {
  side = squareSide;
  ratio = pixelRatio;
  missing.clear();
  State state = State::Complete;
  QHash<QString, Thumbnail> before = std::exchange(thumbnails, {});
  for (const Screenshot& shot : inView) {
    const QString key = keyOf(shot);
    Thumbnail& thumbnail = thumbnails[key];
    if (const auto known = before.find(key); known != before.end())
      thumbnail = std::move(*known);
    else if (const auto ready = loader.cached(shot.url(), maxPixel(side, ratio)))
      thumbnail.picture = fittedPicture(*ready, side, ratio);
    if (!thumbnail.picture.isNull())
      continue;
    state = State::Loading;
    if (!thumbnail.request)
      missing.push_back(shot);
  }
  // Not now: the workers would take the cores from the frame that is being painted.
  if (!missing.empty() && !pendingLoading.isPending())
    pendingLoading = platform::MainQueue::main().async([this] { loadMissing(); });
  return state;
}

void ThumbnailsInView::loadMissing() {
  // The loader takes the newest request first, and the eye begins at the top.
  for (auto shot = missing.rbegin(); shot != missing.rend(); ++shot)
    thumbnails[keyOf(*shot)].request =
        loader.thumbnail(shot->url(), maxPixel(side, ratio),
                         [this, key = keyOf(*shot), path = shot->path](const QImage& image) {
                           if (image.isNull())
                             return;
                           thumbnails[key].picture = fittedPicture(image, side, ratio);
                           onPicture(path);
                         });
  missing.clear();
}

QPixmap ThumbnailsInView::picture(const Screenshot& screenshot) const {
  return thumbnails.value(keyOf(screenshot)).picture;
}

}  // namespace sorrel
