#pragma once

#include "app/capture/ScreenshotStore.h"
#include "app/history/ThumbnailLoader.h"
#include "platform/base/MainQueue.h"

#include <QHash>
#include <QPixmap>

#include <functional>
#include <span>
#include <vector>

namespace sorrel {

/// The pictures of the thumbnails in view, as they come in from the loader. What leaves the view is dropped,
/// and so is its request. Main thread only.
class ThumbnailsInView {
 public:
  enum class State { Loading, Complete };

  /// `onPicture` is told the path of each screenshot whose picture has come in, or will never come.
  ThumbnailsInView(ThumbnailLoader& loader, std::function<void(const QByteArray& path)> onPicture);
  ThumbnailsInView(const ThumbnailsInView&) = delete;
  ThumbnailsInView& operator=(const ThumbnailsInView&) = delete;

  /// `inView`: the screenshots that are in view now, from the top. Their thumbnails are drawn in squares of
  /// `side` points, at `ratio` device pixels a point. Called as they are painted: what the loader keeps is
  /// there at once, and the rest is asked for in the event loop's next turn, when the frame is done.
  State show(std::span<const Screenshot> inView, qreal side, qreal ratio);
  /// Null while it isn't there, for good where the file can't be read.
  [[nodiscard]] QPixmap picture(const Screenshot& screenshot) const;
  /// Whether its picture is still to come.
  [[nodiscard]] bool isLoading(const Screenshot& screenshot) const;

 private:
  struct Thumbnail {
    QPixmap picture;
    ThumbnailLoader::Request request;
    bool hasFailed = false;

    [[nodiscard]] bool isLoading() const { return picture.isNull() && !hasFailed; }
  };
  void loadMissing();

  ThumbnailLoader& loader;
  const std::function<void(const QByteArray&)> onPicture;
  QHash<QByteArray, Thumbnail> thumbnails;
  std::vector<Screenshot> missing;  // from the top
  qreal side = 0;
  qreal ratio = 1;
  platform::WorkItem pendingLoading;
};

}  // namespace sorrel
