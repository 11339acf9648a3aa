#include "app/history/ThumbnailLoader.h"

#include "platform/base/Directory.h"
#include "platform/base/FilePath.h"
#include "platform/base/MainQueue.h"
#include "platform/imaging/codecs/Thumbnail.h"

#include <QCache>
#include <QCoreApplication>

#include <algorithm>
#include <map>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace sorrel {
namespace {

constexpr qsizetype mostCachedBytes = 64 << 20;

/// Path and most pixels. The file's date is no part of it, so that a new thumbnail takes the old one's place.
using Key = std::pair<QByteArray, int>;

struct Kept {
  platform::Date date;  // the file's, when the thumbnail was asked for
  QImage image;
};

bool isOpaque(const QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    if (!std::all_of(row, row + image.width(), [](QRgb pixel) { return qAlpha(pixel) == 255; }))
      return false;
  }
  return true;
}

std::optional<QImage> readForPainter(const QByteArray& path, int maxPixel) {
  auto image = platform::Thumbnail::read(path, maxPixel);
  if (image) {
    image->convertTo(QImage::Format_ARGB32_Premultiplied);
    if (isOpaque(*image))
      image->reinterpretAsFormat(QImage::Format_RGB32);
  }
  return image;
}

}  // namespace

/// What the loader and its threads share. A thread holds on to it, so that it outlives the loader if need be.
class ThumbnailLoader::Work : public std::enable_shared_from_this<Work> {
 public:
  Work(Decode decoder, unsigned most) : decode(std::move(decoder)), mostWorkers(most) {}

  QCache<Key, Kept> cache{mostCachedBytes};  // the main thread's

  /// Null if there is none, or only one of what the file was at another date.
  [[nodiscard]] const QImage* kept(const Key& key, platform::Date date) const;
  void add(const Key& key, platform::Date date, const std::shared_ptr<const Completion>& completion);
  /// Nothing is begun or delivered from here on.
  void close();

 private:
  struct Job {
    Key key;
    platform::Date date;
    std::vector<std::weak_ptr<const Completion>> completions;
    bool hasBegun = false;

    [[nodiscard]] bool isWanted() const {
      return std::any_of(completions.begin(), completions.end(),
                         [](const auto& completion) { return !completion.expired(); });
    }
  };

  void startWorker();
  void runWorker();
  [[nodiscard]] std::shared_ptr<Job> takeNewest();
  [[nodiscard]] std::optional<QImage> make(const Job& job) const;
  /// On the main thread.
  void deliver(const std::shared_ptr<Job>& job, const std::optional<QImage>& image);

  const Decode decode;
  const unsigned mostWorkers;
  std::mutex mutex;                                                     // guards what follows
  std::map<std::pair<Key, platform::Date>, std::shared_ptr<Job>> jobs;  // until they are delivered
  std::vector<std::shared_ptr<Job>> waiting;                            // newest last
  unsigned workers = 0;
  bool isClosed = false;
};

const QImage* ThumbnailLoader::Work::kept(const Key& key, platform::Date date) const {
  const Kept* const known = cache.object(key);
  return known && known->date == date ? &known->image : nullptr;
}

void ThumbnailLoader::Work::add(const Key& key, platform::Date date,
                                const std::shared_ptr<const Completion>& completion) {
  const std::lock_guard lock(mutex);
  std::shared_ptr<Job>& job = jobs[{key, date}];
  if (!job)
    job = std::make_shared<Job>(Job{key, date, {}});
  job->completions.push_back(completion);
  if (job->hasBegun)
    return;
  std::erase(waiting, job);
  waiting.push_back(job);
  if (workers < mostWorkers)
    startWorker();
}

void ThumbnailLoader::Work::startWorker() {
  try {
    std::thread([self = shared_from_this()] { self->runWorker(); }).detach();
    ++workers;
  } catch (const std::system_error&) {
    // No thread to be had now: those at work take this job too, and the next request tries again.
  }
}

void ThumbnailLoader::Work::runWorker() {
  while (const auto job = takeNewest()) {
    auto image = make(*job);
    const std::lock_guard lock(mutex);
    // Under the lock, so that the main queue, which needs the application object, is left alone once closed.
    if (!isClosed)
      platform::MainQueue::main().async(
          [self = shared_from_this(), job, image = std::move(image)] { self->deliver(job, image); });
  }
}

std::shared_ptr<ThumbnailLoader::Work::Job> ThumbnailLoader::Work::takeNewest() {
  const std::lock_guard lock(mutex);
  while (!waiting.empty()) {
    const std::shared_ptr<Job> job = std::move(waiting.back());
    waiting.pop_back();
    if (job->isWanted()) {
      job->hasBegun = true;
      return job;
    }
    jobs.erase({job->key, job->date});
  }
  --workers;
  return nullptr;
}

std::optional<QImage> ThumbnailLoader::Work::make(const Job& job) const {
  try {
    return decode(job.key.first, job.key.second);
  } catch (const std::bad_alloc&) {
    return std::nullopt;  // a forged size, or no memory for a true one: the picture can't be had either way
  }
}

void ThumbnailLoader::Work::deliver(const std::shared_ptr<Job>& job, const std::optional<QImage>& image) {
  {
    const std::lock_guard lock(mutex);
    if (isClosed)
      return;
    jobs.erase({job->key, job->date});
  }
  if (image)
    cache.insert(job->key, new Kept{job->date, *image}, image->sizeInBytes());
  for (const auto& waits : job->completions)
    if (const auto completion = waits.lock())
      (*completion)(image.value_or(QImage()));
}

void ThumbnailLoader::Work::close() {
  const std::lock_guard lock(mutex);
  isClosed = true;
  waiting.clear();
  jobs.clear();
}

ThumbnailLoader& ThumbnailLoader::shared() {
  static std::unique_ptr<ThumbnailLoader> loader;
  if (!loader) {
    loader = std::make_unique<ThumbnailLoader>();
    qAddPostRoutine([] { loader.reset(); });
  }
  return *loader;
}

ThumbnailLoader::ThumbnailLoader()
    : ThumbnailLoader(readForPainter, std::max(std::thread::hardware_concurrency(), 1U)) {
}

ThumbnailLoader::ThumbnailLoader(Decode decode, unsigned mostWorkers)
    : work(std::make_shared<Work>(std::move(decode), mostWorkers)) {
}

ThumbnailLoader::~ThumbnailLoader() {
  work->close();
}

std::optional<QImage> ThumbnailLoader::cached(const QUrl& url, int maxPixel) {
  const QByteArray path = platform::FilePath::of(url);
  const QImage* const image = work->kept({path, maxPixel}, platform::modificationDate(path));
  return image ? std::optional(*image) : std::nullopt;
}

ThumbnailLoader::Request ThumbnailLoader::thumbnail(const QUrl& url, int maxPixel, Completion completion) {
  const auto request = std::make_shared<const Completion>(std::move(completion));
  const QByteArray path = platform::FilePath::of(url);
  const platform::Date date = platform::modificationDate(path);
  if (const QImage* const image = work->kept({path, maxPixel}, date)) {
    platform::MainQueue::main().async([waits = std::weak_ptr(request), image = *image] {
      if (const auto stillWanted = waits.lock())
        (*stillWanted)(image);
    });
  } else {
    work->add({path, maxPixel}, date, request);
  }
  return request;
}

void ThumbnailLoader::forget(const QSet<QByteArray>& paths) {
  for (const Key& key : work->cache.keys()) {
    if (paths.contains(key.first))
      work->cache.remove(key);
  }
}

}  // namespace sorrel
