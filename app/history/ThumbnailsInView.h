#pragma once

#include "app/capture/ScreenshotStore.h"
#include "app/history/ThumbnailLoader.h"

#include <QHash>
#include <QPixmap>

#include <functional>
#include <span>

namespace sorrel {

/// The pictures of the thumbnails in view, as they come in from the loader. What leaves the view is dropped,
/// and so is its request. Main thread only.
class ThumbnailsInView {
 public:
  /// `onPicture` is told the path of each screenshot whose picture has come in.
  ThumbnailsInView(ThumbnailLoader& loader, std::function<void(const QString& path)> onPicture);

  /// `inView`: the screenshots that are in view now, from the top. Their thumbnails are drawn in squares of
  /// `side` points, at `ratio` device pixels a point.
  void show(std::span<const Screenshot> inView, qreal side, qreal ratio);
  /// Null while it isn't there, for good where the file can't be read.
  [[nodiscard]] QPixmap picture(const Screenshot& screenshot) const;

 private:
  struct Thumbnail {
    QPixmap picture;
    ThumbnailLoader::Request request;
  };
  void load(const Screenshot& screenshot, const QString& key, qreal side, qreal ratio);

  ThumbnailLoader& loader;
  const std::function<void(const QString&)> onPicture;
  QHash<QString, Thumbnail> thumbnails;
};

}  // namespace sorrel
