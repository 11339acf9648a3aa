#include "app/history/ThumbnailLoader.h"
#include "platform/base/FilePath.h"
#include "platform/base/MainQueue.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QCoreApplication>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <semaphore>
#include <unistd.h>

using sorrel::ThumbnailLoader;
using testing::ElementsAre;
using testing_support::ScratchHome;
using testing_support::until;

namespace {

/// A decoder that notes what it is asked for and keeps each thread until it is let through. It takes a file's
/// name for the picture's side in pixels; a name that is no number can't be decoded.
class Gate {
 public:
  std::counting_semaphore<> passes{0};

  [[nodiscard]] std::vector<std::string> begun() const {
    const std::lock_guard lock(mutex);
    return names;
  }
  static ThumbnailLoader::Decode decoder(const std::shared_ptr<Gate>& gate) {
    return [gate](const QByteArray& path, int) {
      return gate->decode(QString::fromUtf8(platform::FilePath::name(path)));
    };
  }

 private:
  std::optional<QImage> decode(const QString& name) {
    {
      const std::lock_guard lock(mutex);
      names.push_back(name.toStdString());
    }
    passes.acquire();
    QImage image(name.toInt(), name.toInt(), QImage::Format_RGB32);
    image.fill(Qt::red);
    return image.isNull() ? std::nullopt : std::optional(image);
  }

  mutable std::mutex mutex;
  std::vector<std::string> names;
};

class ThumbnailLoaderTest : public testing::Test {
 protected:
  static QUrl url(int side) { return QUrl::fromLocalFile(QStringLiteral("/nowhere/%1").arg(side)); }
  ThumbnailLoader::Request request(const QUrl& of, int maxPixel = 320) {
    return loader->thumbnail(of, maxPixel, [this](const QImage& image) {
      EXPECT_TRUE(platform::MainQueue::isMainThread());
      answers.push_back(image.width());
    });
  }
  void waitForAnswers(size_t count) {
    until("there are answers", [&] { return answers.size() >= count; });
  }
  void load(const QUrl& of, int maxPixel = 320) {
    gate->passes.release();
    const auto kept = request(of, maxPixel);
    waitForAnswers(answers.size() + 1);
  }

  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::optional<ThumbnailLoader> loader{std::in_place, Gate::decoder(gate), 1};
  std::vector<int> answers;
};

}  // namespace

TEST_F(ThumbnailLoaderTest, makesTheNewestFirstAndWhatIsStillWanted) {
  const auto first = request(url(1));
  until("the first has begun", [&] { return gate->begun().size() == 1; });
  auto begunAndDropped = request(url(1));
  const auto old = request(url(2));
  const auto middle = request(url(3));
  auto dropped = request(url(4));
  auto stillShared = request(url(5));
  const auto keeper = request(url(5));
  const auto askedAgain = request(url(2));
  dropped.reset();
  stillShared.reset();
  begunAndDropped.reset();
  gate->passes.release(10);
  waitForAnswers(5);
  EXPECT_THAT(gate->begun(), ElementsAre("1", "2", "5", "3"));
  EXPECT_THAT(answers, ElementsAre(1, 2, 2, 5, 3));
}

TEST_F(ThumbnailLoaderTest, runsNoMoreThreadsThanToldAndAnswersLater) {
  loader.emplace(Gate::decoder(gate), 2);
  std::vector<ThumbnailLoader::Request> kept;
  for (int side = 1; side <= 4; ++side)
    kept.push_back(request(url(side)));
  until("two have begun", [&] { return gate->begun().size() == 2; });
  gate->passes.release();
  until("a third has begun", [&] { return gate->begun().size() == 3; });
  gate->passes.release(3);
  waitForAnswers(4);

  kept.push_back(request(url(4)));  // out of memory, but not at once
  EXPECT_EQ(answers.size(), 4U);
  waitForAnswers(5);
  kept.push_back(request(url(4)));
  kept.back().reset();
  load(url(5));
  EXPECT_EQ(answers.size(), 6U);
}

TEST_F(ThumbnailLoaderTest, keepsWhatWasBegunThoughNobodyWaits) {
  auto dropped = request(url(7));
  until("it has begun", [&] { return gate->begun().size() == 1; });
  dropped.reset();
  gate->passes.release();
  until("it is kept", [&] { return loader->cached(url(7), 320).has_value(); });
  EXPECT_TRUE(answers.empty());
}

TEST_F(ThumbnailLoaderTest, keepsAsMuchAsFitsByLastUse) {
  constexpr int side = 2048;  // 16 MiB each
  for (int number = 0; number < 4; ++number)
    load(url(side), number);
  EXPECT_TRUE(loader->cached(url(side), 0));
  load(url(side), 4);
  EXPECT_TRUE(loader->cached(url(side), 0));
  EXPECT_FALSE(loader->cached(url(side), 1));
  load(url(4097));  // more than all the room
  EXPECT_FALSE(loader->cached(url(4097), 320));
  EXPECT_THAT(answers, ElementsAre(side, side, side, side, side, 4097));
}

TEST_F(ThumbnailLoaderTest, keepsOnlyTheLatestOfAFileThatChanges) {
  const ScratchHome home;
  const QUrl changing = QUrl::fromLocalFile(home.write(QStringLiteral("2048")));  // 16 MiB of 64
  load(url(2048));
  for (int change = 0; change < 5; ++change) {
    testing_support::setModified(changing.toLocalFile(), QDateTime::fromMSecsSinceEpoch(change));
    load(changing);
  }
  EXPECT_TRUE(loader->cached(changing, 320));
  EXPECT_TRUE(loader->cached(url(2048), 320)) << "the older ones took its room";
}

TEST_F(ThumbnailLoaderTest, missesAChangedFileAndTriesAFailedOneAgain) {
  const ScratchHome home;
  const QUrl picture = QUrl::fromLocalFile(home.write(QStringLiteral("9")));
  load(picture);
  EXPECT_TRUE(loader->cached(picture, 320));
  EXPECT_FALSE(loader->cached(picture, 160));
  testing_support::setModified(picture.toLocalFile(), QDateTime::fromMSecsSinceEpoch(1'234));
  EXPECT_FALSE(loader->cached(picture, 320));
  load(picture);
  testing_support::setModified(picture.toLocalFile(), QDateTime::fromMSecsSinceEpoch(1'235));
  EXPECT_FALSE(loader->cached(picture, 320));

  const QUrl broken = QUrl::fromLocalFile(home.write(QStringLiteral("broken")));
  load(broken);
  load(broken);
  EXPECT_THAT(gate->begun(), ElementsAre("9", "9", "broken", "broken"));
  EXPECT_THAT(answers, ElementsAre(9, 9, 0, 0));
}

TEST_F(ThumbnailLoaderTest, mayGoWhileThreadsAreAtWork) {
  const auto begun = request(url(1));
  until("one has begun", [&] { return gate->begun().size() == 1; });
  const auto waiting = request(url(2));
  loader.reset();
  gate->passes.release(2);
  until("the thread has let go", [&] { return gate.use_count() == 1; });
  EXPECT_THAT(gate->begun(), ElementsAre("1"));
  EXPECT_TRUE(answers.empty());
}

TEST_F(ThumbnailLoaderTest, answersAllWhoStillWaitInACrowd) {
  loader.emplace(Gate::decoder(gate), 4);
  gate->passes.release(1'000);
  std::vector<ThumbnailLoader::Request> kept;
  for (int number = 0; number < 1'200; ++number) {
    // Two for each picture; of eight in a row, the last five are taken back.
    auto asked = request(url(1 + number / 2 % 10), number / 20);
    if (number % 8 < 3)
      kept.push_back(std::move(asked));
    asked.reset();
    if (number % 10 == 0)
      QCoreApplication::processEvents();
  }
  waitForAnswers(kept.size());
  for (int number = 0; number < 1'200; number += 8)
    EXPECT_TRUE(loader->cached(url(1 + number / 2 % 10), number / 20)) << number;
  EXPECT_EQ(answers.size(), kept.size());
}

TEST_F(ThumbnailLoaderTest, readsFilesAsAPainterLikesThem) {
  const ScratchHome home;
  loader.emplace();
  QImage picture(640, 400, QImage::Format_ARGB32);
  const auto load = [&](const QColor& color) {
    picture.fill(color);
    const QString written = home.path(QStringLiteral("picture.png"));
    const QByteArray path = written.toUtf8() + "caf\xe9";  // not all names are text
    EXPECT_TRUE(picture.save(written) && rename(written.toUtf8().constData(), path.constData()) == 0);
    QImage got;
    bool isDone = false;
    const auto kept = loader->thumbnail(platform::FilePath::url(path), 320, [&](const QImage& image) {
      got = image;
      isDone = true;
    });
    if (color == Qt::black)
      unlink(path.constData());
    until("it is done", [&] { return isDone; });
    return got;
  };
  const QImage opaque = load(QColor(10, 20, 30));
  EXPECT_EQ(opaque.size(), QSize(320, 200));
  EXPECT_EQ(opaque.format(), QImage::Format_RGB32);
  EXPECT_EQ(opaque.pixel(7, 7), qRgb(10, 20, 30));
  const QImage veil = load(QColor(255, 0, 0, 128));
  EXPECT_EQ(veil.format(), QImage::Format_ARGB32_Premultiplied);
  EXPECT_EQ(veil.pixelColor(7, 7), QColor(255, 0, 0, 128));
  load(Qt::black);  // gone before or after it was read: either way there is an answer
}
