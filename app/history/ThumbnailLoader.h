#pragma once

#include <QImage>
#include <QSet>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace sorrel {

/// Small pictures of files, made on worker threads and kept in memory: up to 64 MiB of pixels, of which those
/// that were asked for longest ago go first. Of a file that changes only the latest is kept. Main thread
/// only.
///
/// What was asked for last is made first. Threads start when there is work, one for each core at most, and
/// end when none is left. Nobody waits for one that is still at work when the loader goes or the program
/// ends: a file may be slow to read.
class ThumbnailLoader {
 public:
  /// A null image: the file can't be decoded.
  using Completion = std::function<void(const QImage&)>;
  /// Stands for one request. Once the last copy is gone the completion won't be called; a picture that nobody
  /// waits for any more isn't begun, but one that was begun is finished and kept.
  using Request = std::shared_ptr<const void>;
  /// Absent if the file can't be decoded. Called on several threads at once, and it may outlive the loader.
  using Decode = std::function<std::optional<QImage>(const QByteArray& path, int maxPixel)>;

  /// Lives as long as the application object.
  static ThumbnailLoader& shared();
  ThumbnailLoader();
  ThumbnailLoader(Decode decode, unsigned mostWorkers);
  ~ThumbnailLoader();
  ThumbnailLoader(const ThumbnailLoader&) = delete;
  ThumbnailLoader& operator=(const ThumbnailLoader&) = delete;

  /// The picture if it is kept and the file hasn't changed since.
  [[nodiscard]] std::optional<QImage> cached(const QUrl& url, int maxPixel);
  /// At most `maxPixel` pixels wide and high, in `Format_RGB32` if it is opaque, else
  /// `Format_ARGB32_Premultiplied`: what a painter is fastest with. Always answers later, through the main
  /// queue.
  [[nodiscard]] Request thumbnail(const QUrl& url, int maxPixel, Completion completion);
  /// Keeps nothing of these files any longer, in whatever size.
  void forget(const QSet<QByteArray>& paths);

 private:
  class Work;
  const std::shared_ptr<Work> work;
};

}  // namespace sorrel
